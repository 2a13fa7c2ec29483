#pragma once

#include <QtGlobal>

#include <memory>

/// While it lives, every write of this process that would take a file on disk past \a room bytes fails, as
/// on a full disk. Files can be made and renamed; a pipe or a socket is not concerned.
class FullDisk
{
public:
    explicit FullDisk(qint64 room = 0);
    ~FullDisk();
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    struct Former;
    std::unique_ptr<Former> m_former;
};
