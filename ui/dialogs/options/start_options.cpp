#include "ui/dialogs/options/start_options.h"

CStartOptions::CStartOptions()
{
    addAll<Flag>({
        {"startInManualMode", "Запускать в ручном режиме", &COptions::startInManualMode},
        {"checkStopFile", "Останавливаться по просьбе новой копии", &COptions::checkStopFile,
         "Второй запуск на той же папке данных может попросить эту программу завершиться"},
    });
}
