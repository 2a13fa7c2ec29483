#pragma once

#include "app/options.h"

#include <variant>
#include <vector>

/// velda.ini as data: which key fills which field. The order is that of reading and of writing.

using SettingField =
    std::variant<int COptions::*, Relaxed<int> COptions::*, bool COptions::*, QString COptions::*,
                 QStringList COptions::*, QRect COptions::*, QFont COptions::*>;

enum class SettingUse {
    ReadAndWrite,
    ReadOnly,  ///< read by Load(), never written
    WriteOnly, ///< written by Save(); Load() takes the field from elsewhere
};

/// One key. Its default is the field's built-in value.
struct Setting {
    const char *key; ///< UTF-8
    SettingField field;
    SettingUse use = SettingUse::ReadAndWrite;
    bool (*writtenWhile)(const COptions &) =
        nullptr; ///< null is always; else the key stays as it is in the file
};

struct SettingSection {
    const char *name;
    std::vector<Setting> settings;
};

/// A timing entry of section DORAL: key + "_0" and "_1" fill the rows 0 and 1.
struct TimingSetting {
    const char *key;
    int SKKTimingRow::*entry;
    int fallback; ///< seconds; some differ from the built-in row
};

/// All sections but those of the subscribers.
[[nodiscard]] const std::vector<SettingSection> &settingSections();
[[nodiscard]] const std::vector<TimingSetting> &timingSettings();

/// The font of the journal and of telegrams while none is chosen.
[[nodiscard]] QFont builtInFont();
