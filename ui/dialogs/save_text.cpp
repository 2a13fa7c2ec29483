#include "ui/dialogs/save_text.h"

#include "app/ask.h"
#include "app/options.h"
#include "app/whole_file.h"
#include "records/protocol.h"
#include "ui/dialogs/pick_file.h"

#include <QDir>

namespace
{
const QString Title = QStringLiteral("Сохранение файла");
constexpr int NamedCharacters = 20; // of those that a coding lacks

QString shownCharacter(uint character)
{
    const QString code = QString::asprintf("U+%04X", character);
    const bool seen = QChar::isPrint(character) && !QChar::isSpace(character) && !QChar::isMark(character);
    return seen ? QString::fromUcs4(&character, 1) : code;
}

QString namesOf(const QVector<uint> &characters)
{
    QStringList names;
    for (const uint character : characters.mid(0, NamedCharacters))
        names << shownCharacter(character);
    if (characters.size() > NamedCharacters)
        names << QStringLiteral("...");
    return names.join(QLatin1Char(' '));
}

/// Whether the operator takes "?" for what the coding lacks; true if there is nothing of that.
bool agreesToLoss(QWidget *parent, const CodedText &coded, FileCoding coding)
{
    if (coded.lostCount == 0)
        return true;
    const QString question = QStringLiteral("В кодировке %1 нет знаков текста (%2):\n%3\n\n"
                                            "Вместо каждого будет записан знак «?». Сохранить?")
                                 .arg(nameOf(coding))
                                 .arg(coded.lostCount)
                                 .arg(namesOf(coded.lost));
    return ask(parent, Title, question) == QMessageBox::Yes;
}

bool write(QWidget *parent, const QString &path, const QByteArray &bytes)
{
    if (replaceWholeFile(path, bytes))
        return true;
    const QString failure = QStringLiteral("Ошибка записи файла ") + shownName(path);
    Log.addCacheServiceString(failure, ProtocolError, true);
    tellError(parent, Title, failure);
    return false;
}
} // namespace

QString placeToSave(const QString &name)
{
    const QDir directory(Options.pathForSaveInInput);
    if (Options.pathForSaveInInput.isEmpty() || !directory.exists())
        return name;
    return name.isEmpty() ? directory.path() : directory.filePath(name);
}

bool saveTextWithCodepage(QWidget *parent, const QString &text, const QString &suggestedName)
{
    CodedFile file{placeToSave(suggestedName), FileCoding::UTF8};
    for (;;) {
        file = pickCodedFileToSave(parent, Title, file);
        if (file.path.isEmpty())
            return false;
        const CodedText coded = codedText(text, file.coding);
        if (agreesToLoss(parent, coded, file.coding))
            return write(parent, file.path, coded.bytes);
    }
}
