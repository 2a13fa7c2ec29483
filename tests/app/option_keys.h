#pragma once

#include <QVariant>

#include <vector>

/// A key of velda.ini as the file's readers know it: "SECTION/key", the value of a file without it, another
/// value, and the field in Options that it fills.
struct OptionKey {
    const char *key;
    QVariant builtIn;
    QVariant other;
    QVariant (*field)();
    const char *writtenAs; ///< null: the same key; empty: never written
};

/// Every key whose value goes straight into a field.
const std::vector<OptionKey> &optionKeys();
