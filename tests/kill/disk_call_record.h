#pragma once

#include <string>

/// One call that changed the disk, as disk_calls.cpp keeps it: what was done ("make", "trunc", "write",
/// "rename", "unlink", "rmdir", "sync", "mkdir", "link", "resize", "mark"), to which path, with the other
/// path or the figure that belongs to it, and the bytes. Fields are told by their lengths in front.
[[nodiscard]] inline std::string diskCallRecord(const std::string &what, const std::string &path,
                                                const std::string &other = std::string(),
                                                const std::string &bytes = std::string())
{
    std::string record;
    for (const std::string &field : {what, path, other, bytes})
        record += std::to_string(field.size()) + ':' + field;
    return record + '\n';
}
