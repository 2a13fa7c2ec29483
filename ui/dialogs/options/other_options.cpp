#include "ui/dialogs/options/other_options.h"

#include <QComboBox>

COtherOptions::COtherOptions()
{
    add(Number{"TZ", "Смещение в часах от Москвы", &COptions::TZ, -12, 14, "Вычитается из часов машины"});
    addAll<Line>({
        {"accessCodeUser", "Код доступа оператора", &COptions::accessCodeUser, 64,
         "Открывает параметры без страниц подключения, процедуры, запуска и «Разное»"},
        {"accessCodeAdmin", "Код доступа администратора", &COptions::accessCodeAdmin, 64,
         "Открывает все страницы; без обоих кодов вопроса нет"},
    });
    addLanguage();
    addAll<Flag>({
        {"enableAttachFiles", "Вложение файлов", &COptions::enableAttachFiles,
         "Файлы можно вкладывать в текст телеграммы"},
        {"enableProtectedSend", "Алгоритм гарантированной передачи", &COptions::enableProtectedSend,
         "Предлагается при отправке"},
        {"noLockButtonInProtocol", "Не блокировать кнопки протокола", &COptions::noLockButtonInProtocol},
        {"limitProtocolStringWidth", "Ограничить ширину строки протокола",
         &COptions::limitProtocolStringWidth},
    });
    add(Number{"protocolStringWidth", "Ширина строки, знаков", &COptions::protocolStringWidth, 1, 999});
    add(Flag{"debugInfoToProtocol", "Записывать отладочную информацию в протокол",
             &COptions::debugInfoToProtocol, "До конца работы программы"});
}

// The list has the first rows only: the further languages are for the file.
void COtherOptions::addLanguage()
{
    QComboBox *language = newList(
        "nationalLanguageUse",
        {QStringLiteral("---"), QStringLiteral("Татарский"), QStringLiteral("Грузинский")}, QString());
    addRow(QStringLiteral("Национальный язык"), {language});
    bind(language, indexOf(language),
         {[] { return QVariant(int(Options.nationalLanguageUse)); },
          [](const QVariant &value) { Options.nationalLanguageUse = value.toInt(); },
          {&COptions::nationalLanguageUse}});
}
