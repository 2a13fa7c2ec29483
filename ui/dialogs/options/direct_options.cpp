#include "ui/dialogs/options/direct_options.h"

CDirectOptions::CDirectOptions()
{
    add(Flag{"SendConfirmation", "Подтверждать прием телеграмм", &COptions::SendConfirmation,
             "На каждую телеграмму в линию уходит «СООБЩЕНИЕ ПРИНЯТО»"});
}
