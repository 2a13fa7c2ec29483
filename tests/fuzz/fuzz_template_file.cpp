// Any file as a template of the editor, opened through its window as the operator does it, written again and
// opened once more. An input begins with the form, "0" to "4", or "A" to "E" for the same with a cipher.

#include "app/options.h"
#include "app/procedure.h"
#include "records/protocol.h"
#include "tests/fuzz/fuzz.h"
#include "tests/ui/window/editor_room.h"
#include "text/file_coding.h"
#include "text/filters.h"
#include "text/telegram_form.h"
#include "text/telegram_index.h"
#include "text/utils.h"

#include <QApplication>

#include <memory>

namespace
{
/// A window that opens and writes templates without asking where.
class StoreRoom : public EditorRoom
{
public:
    StoreRoom()
        : EditorRoom(SKK, [] {
              Options.editorUseShablonFiles = true;
              Options.protocolFileNoClose = true; // the book is another target's affair
              for (EditorInterfaceMode &mode : Options.interfaceModes)
                  mode.procedures = 1 << SKK;
          })
    {
    }

    void empty(int formNumber, bool cipher) const
    {
        choose(formNumber);
        page.text->clear(); // its history, too
        page.cryptoMode->setChecked(cipher);
        page.category->setCurrentIndex(0);
        page.series->setCurrentIndex(0);
        for (QLineEdit *line : page.findChildren<QLineEdit *>())
            line->clear();
    }
    void load(const QByteArray &content)
    {
        desk.write(QStringLiteral("a.txt"), content);
        answers.yes << true;
        answers.opened << desk.path(QStringLiteral("a.txt"));
        page.load->click();
    }
    QByteArray save()
    {
        answers.yes << true;
        answers.names << FilteredFile{desk.path(QStringLiteral("b.txt")), QStringLiteral("Все (*.*)")};
        page.save->click();
        return desk.read(QStringLiteral("b.txt"));
    }
    void forgetNews()
    {
        Log.lines = QStringList(QString());
        (void)asked();
    }
};

/// One window for many inputs; it is built anew before it has grown old.
StoreRoom &room()
{
    constexpr int Uses = 500;
    static std::unique_ptr<StoreRoom> current;
    static int left = 0;
    if (--left < 0) {
        current.reset();
        current = std::make_unique<StoreRoom>();
        left = Uses;
    }
    return *current;
}

bool same(const TelegramFields &one, const TelegramFields &other)
{
    return one.category == other.category && one.secondSeries == other.secondSeries &&
           one.index == other.index && one.header == other.header && one.marks == other.marks &&
           one.address == other.address && one.kassa == other.kassa && one.to == other.to &&
           one.from == other.from && one.text == other.text && one.signature == other.signature;
}

/// Of our own the code is known.
QString textOf(const QByteArray &content)
{
    return isUtf8(content) ? QString::fromUtf8(content.constData())
                           : CUtils::CorrectCodePageToUtf8(content).split(QChar(QChar::Null)).join(QString());
}

/// What a template of \a content gives to the fields on show, and no more.
void checkFields(const StoreRoom &room, const QByteArray &content)
{
    const FormRows &shown = room.page.shownRows();
    const TelegramFields read = parseTemplate(textOf(content), shown);
    const TelegramFields fields = room.page.fields();
    Fuzz::check(fields.header == read.header && fields.marks == read.marks &&
                    fields.address == read.address && fields.kassa == read.kassa && fields.to == read.to &&
                    fields.from == read.from && fields.signature == read.signature,
                "each field has its line");
    Fuzz::check(room.page.category->findText(fields.category) >= 0, "a category of the list");
    Fuzz::check(fields.index.size() <= LongestTelegramIndexLength, "an index has its room");
    Fuzz::check(read.index.left(fields.index.size()) == fields.index, "an index loses only its end");
}

void checkText(const QString &text, bool cipher)
{
    for (const QChar c : text) {
        const bool mark = QStringLiteral("<[{}$\n").contains(c);
        Fuzz::check(mark || QStringClearNonMTK2(c) == c, "the text has the signs of the code alone");
    }
    Fuzz::check(cipher || !text.contains(u'\r'), "no return in the text");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t Longest = 1 << 14;
    static int argc = 0;
    static const auto *const application = new QApplication(argc, nullptr); // outlives every window
    Q_UNUSED(application)
    const char form = size > 0 ? char(data[0]) : '0';
    const bool cipher = form >= 'A' && form <= 'E';
    const int number = cipher ? form - 'A' : form >= '0' && form <= '4' ? form - '0' : FullForm;
    const QByteArray content(reinterpret_cast<const char *>(data) + qMin<size_t>(size, 1),
                             int(qMin(size, Longest) - qMin<size_t>(size, 1)));
    StoreRoom &store = room();
    store.forgetNews();
    store.empty(number, cipher);
    store.load(content);
    checkFields(store, content);
    const TelegramFields first = store.page.fields();
    checkText(first.text, cipher);
    if (!store.page.save->isEnabled()) // without a text
        return 0;
    const QByteArray written = store.save();
    Fuzz::check(QString::fromUtf8(written).toUtf8() == written, "a template is written in UTF-8");
    store.empty(number, cipher);
    store.load(written);
    Fuzz::check(same(store.page.fields(), first), "what was written reads as the same");
    return 0;
}
