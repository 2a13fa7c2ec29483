#pragma once

#include <QtGlobal>

class QFileInfo;

/// Reads one ordinary file after the other, for a look into thousands of small ones: QFile asks the system
/// for more about each of them than that takes. Never waits, and opens nothing but ordinary files and links
/// to them.
class COrdinaryReader
{
public:
    COrdinaryReader() = default;
    ~COrdinaryReader() { close(); }
    COrdinaryReader(const COrdinaryReader &) = delete;
    COrdinaryReader &operator=(const COrdinaryReader &) = delete;

    /// Opens the file that \a listed tells of, which a directory's listing has just brought. False if it is
    /// none of the ordinary kind or cannot be opened.
    [[nodiscard]] bool open(const QFileInfo &listed);
    [[nodiscard]] bool isOpen() const { return m_handle >= 0; }
    /// Reads up to \a size bytes and returns how many they were; fewer at the file's end, or if the disk
    /// fails.
    [[nodiscard]] int read(char *to, int size);
    void close();

private:
    int m_handle = -1;
    qint64 m_left = 0; ///< bytes to come by the size at the opening; below 0 once the file has grown
};
