#pragma once

#include <QString>

#include <memory>

class Desk;

/// While it lives, a directory of a desk and its files cannot be changed by this process, as on a disk that
/// is read-only; the rest of the desk is as before. On Windows the files are held by another user of theirs.
class ReadOnly
{
public:
    /// What may still be done to the files: all but to rename or remove them, reading, nothing.
    enum Reading { Writable, Allowed, Refused };
    ReadOnly(const Desk &desk, const QString &directory, Reading reading = Allowed);
    ~ReadOnly();
    ReadOnly(const ReadOnly &) = delete;
    ReadOnly &operator=(const ReadOnly &) = delete;

private:
    struct Held;
    std::unique_ptr<Held> m_held;
};
