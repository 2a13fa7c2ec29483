#pragma once

#include <QString>

#include <string>

/// \a path as the calls of Windows take it, however long it is: those of 260 characters and more are taken
/// only whole, from their drive or machine on, behind a mark of their own.
[[nodiscard]] std::wstring systemPath(const QString &path);
