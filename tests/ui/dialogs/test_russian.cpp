// What the toolkit's own boxes say, in the application as the program makes it.

#include "app/ask.h"
#include "app/startup.h"
#include "tests/support/row.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_lists_list_dialog.h"
#include "ui/dialogs/file_dialog_with_codepage_select.h"
#include "ui/dialogs/operator_list_dialog.h"
#include "ui/dialogs/re_send_tlg_dialog.h"
#include "ui/dialogs/send_tlg_dialog.h"

#include <QAction>
#include <QCalendarWidget>
#include <QColorDialog>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <memory>

class TestRussian : public QObject
{
    Q_OBJECT

private slots:
    void questionHasRussianButtons();
    void questionWithCancelHasRussianButtons();
    void everyStandardButtonIsRussian();
    void boxSpeaksRussian_data();
    void boxSpeaksRussian();
    void menuOfAFieldSpeaksRussian_data();
    void menuOfAFieldSpeaksRussian();
    void calendarNamesRussianMonths();
    void calendarOfATimeToSendNamesRussianMonths();
    void dialogsHaveNoQuestionMark();
};

namespace
{
/// Words that are the same in Russian: keys, colour systems, the buttons' OK, file kinds and masks.
const QStringList SharedWords{"OK", "Ctrl", "Shift", "Ins", "Del", "HTML", "PDF", "CP", "UTF"};

QStringList labelsOf(const QWidget &box)
{
    QStringList texts{box.windowTitle()};
    for (const QLabel *label : box.findChildren<QLabel *>())
        texts << label->text();
    for (const QAbstractButton *button : box.findChildren<QAbstractButton *>())
        texts << button->text() << button->toolTip();
    for (const QGroupBox *group : box.findChildren<QGroupBox *>())
        texts << group->title();
    for (const QAction *action : box.findChildren<QAction *>())
        texts << action->text();
    for (const QTabWidget *tabs : box.findChildren<QTabWidget *>())
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    return texts;
}

QStringList choicesOf(const QWidget &box)
{
    QStringList texts;
    for (const QComboBox *combo : box.findChildren<QComboBox *>())
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i);
    for (const QHeaderView *header : box.findChildren<QHeaderView *>())
        for (int i = 0; header->model() && i < header->model()->columnCount(); ++i)
            texts << header->model()->headerData(i, header->orientation()).toString();
    return texts;
}

/// Those of \a texts that hold a foreign word. A path of the disk is nobody's language.
QStringList foreignOf(const QStringList &texts)
{
    static const QRegularExpression word(QStringLiteral("[A-Za-z]{2,}"));
    QStringList foreign;
    for (const QString &text : texts) {
        auto words = word.globalMatch(text);
        while (!text.startsWith(QLatin1Char('/')) && words.hasNext())
            if (!SharedWords.contains(words.next().captured()))
                foreign << text;
    }
    return foreign;
}

/// The texts of the buttons, sorted, of the box that \a open shows; closes it.
QStringList buttonsOfBox(const std::function<void()> &open)
{
    QStringList buttons;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        for (const QAbstractButton *button : box->buttons())
            buttons << button->text();
        box->done(QMessageBox::No);
    });
    open();
    buttons.sort();
    return buttons;
}

struct Box {
    const char *name;
    std::function<QDialog *()> make;
};

QFileDialog *fileDialog(QFileDialog::AcceptMode mode)
{
    auto *dialog = new QFileDialog(nullptr, QString(), QStringLiteral("/"));
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(mode);
    return dialog;
}

/// Whether the box for printing is the system's own, in the system's language.
bool systemPrints()
{
    return QSysInfo::kernelType() == QLatin1String("winnt");
}

QPrintDialog *printDialog()
{
    static QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    return new QPrintDialog(&printer);
}

const Box boxes[] = {
    {"open a file", [] { return fileDialog(QFileDialog::AcceptOpen); }},
    {"save a file", [] { return fileDialog(QFileDialog::AcceptSave); }},
    {"a file with its coding", [] { return new CFileDialogWithCodepageSelect; }},
    {"a telegram to forward", [] { return new CReSendTlgDialog(QStringLiteral("А")); }},
    {"subscribers", [] { return new CAbonentListDialog; }},
    {"lists of subscribers", [] { return new CAbonentListsListDialog; }},
    {"operators", [] { return new COperatorListDialog; }},
    {"a telegram to send", [] { return new CSendTlgDialog; }},
    {"colour", [] { return new QColorDialog; }},
    {"font", [] { return new QFontDialog; }},
    {"print", [] { return printDialog(); }},
    {"input", [] { return new QInputDialog; }},
    {"progress", [] { return new QProgressDialog; }},
};
} // namespace

void TestRussian::questionHasRussianButtons()
{
    const auto open = [] { (void)ask(nullptr, QStringLiteral("Velda"), QStringLiteral("Да?")); };
    QCOMPARE(buttonsOfBox(open), (QStringList{"&Да", "&Нет"}));
}

void TestRussian::questionWithCancelHasRussianButtons()
{
    const auto open = [] { (void)askWithCancel(nullptr, QStringLiteral("Velda"), QStringLiteral("Да?")); };
    QCOMPARE(buttonsOfBox(open), (QStringList{"&Да", "&Нет", "Отмена"}));
}

void TestRussian::everyStandardButtonIsRussian()
{
    QStringList texts;
    for (uint bit = QDialogButtonBox::FirstButton; bit <= QDialogButtonBox::LastButton; bit <<= 1)
        texts << QDialogButtonBox(QDialogButtonBox::StandardButton(bit)).buttons().constFirst()->text();
    QCOMPARE(texts.size(), 18);
    QCOMPARE(foreignOf(texts), QStringList());
}

void TestRussian::boxSpeaksRussian_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(boxes)); ++i)
        if (boxes[i].name != QLatin1String("print") || !systemPrints())
            row(boxes[i].name, i);
}

void TestRussian::boxSpeaksRussian()
{
    QFETCH(int, index);
    const std::unique_ptr<QDialog> box(boxes[index].make());
    box->show();
    QTRY_VERIFY(box->isVisible());
    const QStringList texts = labelsOf(*box) + choicesOf(*box);
    QVERIFY(!texts.filter(QRegularExpression(QStringLiteral("[А-я]"))).isEmpty());
    QCOMPARE(foreignOf(texts), QStringList());
}

void TestRussian::menuOfAFieldSpeaksRussian_data()
{
    QTest::addColumn<int>("kind");
    row("line", 0);
    row("text", 1);
    row("plain text", 2);
}

void TestRussian::menuOfAFieldSpeaksRussian()
{
    QFETCH(int, kind);
    QLineEdit line;
    QTextEdit text;
    QPlainTextEdit plain;
    const std::unique_ptr<QMenu> menu(kind == 0   ? line.createStandardContextMenu()
                                      : kind == 1 ? text.createStandardContextMenu()
                                                  : plain.createStandardContextMenu());
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts << action->text().section(QLatin1Char('\t'), 0, 0);
    texts.removeAll(QString());
    const QStringList expected{"&Отменить действие", "&Повторить действие", "&Вырезать",
                               "&Копировать",        "В&ставить",           "Удалить",
                               "Выделить всё"};
    QCOMPARE(texts, expected);
}

void TestRussian::calendarNamesRussianMonths()
{
    QCalendarWidget calendar;
    calendar.setSelectedDate(QDate(2026, 7, 31));
    const auto *month = calendar.findChild<QToolButton *>(QStringLiteral("qt_calendar_monthbutton"));
    QVERIFY(month);
    QCOMPARE(month->text(), QStringLiteral("июль"));
}

void TestRussian::calendarOfATimeToSendNamesRussianMonths()
{
    CReSendTlgDialog dialog(QStringLiteral("А")); // of a switched channel, as the options have it at start
    dialog.show();
    auto *time = dialog.findChild<QDateTimeEdit *>(QStringLiteral("sendTime"));
    QVERIFY(time);
    time->setDate(QDate(2026, 7, 31));
    QTest::mouseClick(time, Qt::LeftButton, Qt::NoModifier, QPoint(time->width() - 5, time->height() / 2));
    const auto *month = time->findChild<QToolButton *>(QStringLiteral("qt_calendar_monthbutton"));
    QVERIFY(month);
    QCOMPARE(month->text(), QStringLiteral("июль"));
}

void TestRussian::dialogsHaveNoQuestionMark()
{
    for (const Box &box : boxes) {
        const std::unique_ptr<QDialog> dialog(box.make());
        QVERIFY2(!(dialog->windowFlags() & Qt::WindowContextHelpButtonHint), box.name);
    }
}

// The program itself is started, in a directory that cannot be entered; where it warns of that, in its own
// application, the cases run.
int main(int argc, char *argv[])
{
    int failed = -1;
    const QTemporaryDir settings; // of the file dialog, which keeps where it has been
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    warnHandler = [&](const QString &) {
        TestRussian test;
        failed = QTest::qExec(&test, argc, argv);
    };
    QByteArray nowhere("-d=/dev/null/nowhere");
    char *arguments[] = {argv[0], nowhere.data(), nullptr};
    (void)runVelda(2, arguments);
    return failed;
}
#include "test_russian.moc"
