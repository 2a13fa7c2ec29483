#include "ui/dialogs/options/centre_options.h"

CCentreOptions::CCentreOptions()
{
    add(Choice{"waitNote", "Ожидать отметку после квитанции", &COptions::waitNote, "Нет|Doral|СТИН",
               "Чьей отметки за телеграммой ждать"});
    addAll<Number>({
        {"waitNoteTimeOut", "Ожидать отметку не дольше, с", &COptions::waitNoteTimeOut, 0, 999},
        {"autoConfirmRTimeOut", "Подтвердить категорию Р через, с", &COptions::autoConfirmRTimeOut, 0, 9999,
         "0: только оператор"},
    });
    add(Line{"redirectInputTlg", "Пересылать принятые на индекс", &COptions::redirectInputTlg, 32,
             "Пусто: не пересылать"});
    add(Flag{"redirectInputTlgNoHeader", "Пересылать без заголовка", &COptions::redirectInputTlgNoHeader});
}
