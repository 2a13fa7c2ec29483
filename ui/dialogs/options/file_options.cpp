#include "ui/dialogs/options/file_options.h"

#include "ui/dialogs/options/option_faults.h"

CFileOptions::CFileOptions()
{
    constexpr int LongestPath = 1024;
    addAll<Line>({
        {"pathInp", "Папка принятых", &COptions::pathInp, LongestPath,
         "Путь от папки данных, как и прочие здесь", folderFault},
        {"pathOut", "Папка отправки", &COptions::pathOut, LongestPath, "Очередь и отправленные", folderFault},
        {"pathPrt", "Папка протоколов", &COptions::pathPrt, LongestPath, "Новый день пишется уже в нее",
         folderFault},
    });
    addAll<Number>({
        {"scanDirsTimeout", "Просматривать очередь через, с", &COptions::scanDirsTimeout, 1, 3600},
        {"keepFilesDays", "Хранить файлы, дней", &COptions::keepFilesDays, 1, 9999,
         "Более старые телеграммы и протоколы удаляются"},
    });
    addAll<Flag>({
        {"protocolFileNoClose", "Кешировать протокол", &COptions::protocolFileNoClose,
         "Файл протокола остается открытым между записями"},
        {"appendFileIfExist", "Дописывать в конец файла, если файл существует", &COptions::appendFileIfExist},
        {"removeRegisterInInputFiles", "Убирать регистры из принятых", &COptions::removeRegisterInInputFiles,
         "Без них шифрованный текст не восстановить"},
        {"markNewFilesInInp", "Отмечать принятые как новые", &COptions::markNewFilesInInp},
        {"markNewFilesInOut", "Отмечать отправленные как новые", &COptions::markNewFilesInOut},
    });
    addAll<Line>({
        {"pathForSaveInInput", "Сохранять принятые в папку", &COptions::pathForSaveInInput, LongestPath,
         "Предлагается при сохранении из «Входящих»", offeredFolderFault},
        {"pathForSaveLoadInEditop", "Папка редактора", &COptions::pathForSaveLoadInEditop, LongestPath,
         "Предлагается редактором при открытии и сохранении", offeredFolderFault},
    });
}
