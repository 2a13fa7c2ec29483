#include "tests/ui/window/fields_room.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionFrame>

namespace
{
constexpr int Usual = 9; ///< points

/// The letters of the program in \a points, while it lives.
class Letters
{
public:
    explicit Letters(int points) : m_usual(QApplication::font()) { set(points); }
    ~Letters() { QApplication::setFont(m_usual); }
    void set(int points) const
    {
        QFont font = m_usual;
        font.setPointSize(points);
        QApplication::setFont(font);
    }

private:
    QFont m_usual;
};

void settle()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

void everyFormAndSize()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<int>("points");
    const char *names[] = {"message", "telegram", "full", "international", "REX400"};
    const QPair<const char *, int> sizes[] = {
        {"100 %", Usual}, {"plus 4 points", Usual + 4}, {"150 %", 14}, {"200 %", 18}, {"largest", 24}};
    for (int form = 0; form < TelegramFormCount; ++form)
        for (const auto &size : sizes)
            row(qPrintable(QString("%1, %2").arg(names[form], size.first)), form, size.second);
}

void withEverything()
{
    Options.tlgFont.setPointSize(12);
    Options.usePrf = Options.enableAttachFiles = Options.useOperators = true;
    Options.listOperators = QStringList{"ИВАНОВ"};
}

/// What \a line can show without moving its text.
int shownWidth(const QLineEdit &line)
{
    QStyleOptionFrame option;
    option.initFrom(&line);
    option.lineWidth = line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &line);
    constexpr int InnerMargin = 2; // on each side
    return line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &line).width() -
           2 * InnerMargin;
}
} // namespace

/// The room of the editor's fields in each form, in letters of each size.
class TestEditorRoom : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreAsWideAsTheirText_data() { everyFormAndSize(); }
    void fieldsAreAsWideAsTheirText();
    void fieldsFollowTheOption();
    void nothingIsCutOff_data() { everyFormAndSize(); }
    void nothingIsCutOff();
    void rowIsFilledByItsLine();
    void textGivesWayBeforeTheFormScrolls();
    void titlesStandInOneColumn();
    void fieldThatIsReachedIsInView();
    void cursorInTheTextIsInView();
    void fieldOfAFaultIsInView();
    void zoomKeepsTheRoom();
};

void TestEditorRoom::fieldsAreAsWideAsTheirText()
{
    QFETCH(int, form);
    QFETCH(int, points);
    const Letters letters(points);
    const FieldsRoom room(form, SKK, withEverything);
    room.form->resize(800, 600);
    settle();
    const QPair<const QLineEdit *, QStringList> fields[] = {
        {room.page.index, {"000=000", "999999"}},
        {room.page.wordsCount, {"9999", "$"}},
        {room.page.time, {"31/07 1200", "DD/MM HHMM"}},
        {room.page.fWordsCount, {"1000/2000"}},
        {room.page.fTime, {"31 1200"}},
    };
    for (const auto &field : fields) {
        if (!field.first->isVisible())
            continue;
        for (const QString &text : field.second) {
            const int width = field.first->fontMetrics().horizontalAdvance(text);
            QVERIFY2(shownWidth(*field.first) >= width, qPrintable(field.first->objectName()));
        }
        QCOMPARE(field.first->minimumWidth(), field.first->maximumWidth());
        QCOMPARE(field.first->width(), field.first->minimumWidth());
    }
}

void TestEditorRoom::fieldsFollowTheOption()
{
    const Letters letters(Usual);
    const FieldsRoom room(FullForm, SKK, withEverything);
    const int usual = room.page.time->width();
    letters.set(Usual + 4); // what fontSizeCorrect adds
    settle();
    QVERIFY(room.page.time->width() > usual);
    QVERIFY(shownWidth(*room.page.time) >= room.page.time->fontMetrics().horizontalAdvance("31/07 1200"));
    letters.set(Usual);
    settle();
    QCOMPARE(room.page.time->width(), usual);
}

void TestEditorRoom::nothingIsCutOff()
{
    QFETCH(int, form);
    QFETCH(int, points);
    const Letters letters(points);
    const FieldsRoom room(form, SKK, withEverything);
    room.page.indexFault->setText("Неверно указан индекс");
    room.form->setEditorText("ТЕКСТ~^№");
    room.form->resize(800, 600);
    settle();
    QCOMPARE(room.form->size(), QSize(800, 600));
    auto *area = room.page.findChild<QScrollArea *>();
    for (QWidget *widget : room.page.findChildren<QWidget *>()) {
        const bool words = qobject_cast<QLabel *>(widget) || qobject_cast<QAbstractButton *>(widget) ||
                           qobject_cast<QComboBox *>(widget) || qobject_cast<QLineEdit *>(widget) ||
                           widget == room.page.text;
        if (!words || !widget->isVisible() || !area->widget()->isAncestorOf(widget))
            continue;
        area->ensureWidgetVisible(widget, 0, 0);
        const QByteArray called = widget->objectName().toUtf8();
        const char *name = called.constData();
        const QRect seen = widget->visibleRegion().boundingRect();
        QVERIFY2(seen.width() == widget->width(), name);
        QVERIFY2(seen.height() == widget->height() || widget == room.page.text, name);
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), name);
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), name);
    }
    QVERIFY(room.page.text->viewport()->height() >= 4 * room.page.text->fontMetrics().lineSpacing());
}

void TestEditorRoom::rowIsFilledByItsLine()
{
    const Letters letters(Usual);
    const FieldsRoom room(FullForm, SKK, withEverything);
    room.form->resize(800, 600);
    settle();
    const auto right = [&room](const QWidget *field) {
        return field->mapTo(&room.page, field->rect().topRight()).x();
    };
    QCOMPARE(right(room.page.marks), right(room.page.pScript));
    QVERIFY(right(room.page.marks) > 780);
    QVERIFY(room.page.from->width() > 250);
    QCOMPARE(room.page.series->width(), room.page.series->sizeHint().width());
    QVERIFY(right(room.page.index) < 400);
    QVERIFY(right(room.page.time) > 760); // "=" stands behind it
}

void TestEditorRoom::textGivesWayBeforeTheFormScrolls()
{
    const Letters letters(Usual);
    const FieldsRoom room(FullForm);
    const QScrollBar &bar = *room.page.findChild<QScrollArea *>()->verticalScrollBar();
    room.form->resize(800, 460);
    settle();
    QCOMPARE(bar.maximum(), 0);
    QVERIFY(room.page.print->visibleRegion().boundingRect() == room.page.print->rect());
    room.form->resize(800, 300);
    settle();
    QVERIFY(bar.maximum() > 0);
    QVERIFY(room.page.text->height() >= 5 * room.page.text->fontMetrics().lineSpacing());
    room.form->resize(800, 600);
    settle();
    QCOMPARE(bar.maximum(), 0);
    QVERIFY(room.page.text->height() > 200);
}

void TestEditorRoom::titlesStandInOneColumn()
{
    for (const int form : {int(FullForm), int(InternationalForm)}) {
        const FieldsRoom room(form);
        QSet<int> lefts;
        for (const QWidget *field :
             QList<QWidget *>{room.page.category, room.page.from, room.page.marks, room.page.address,
                              room.page.fKassa, room.page.fTo, room.page.fFrom, room.page.pScript})
            if (field->isVisible())
                lefts << field->mapTo(&room.page, QPoint()).x();
        QCOMPARE(lefts.size(), 1);
    }
}

void TestEditorRoom::fieldThatIsReachedIsInView()
{
    const Letters letters(24);
    const FieldsRoom room(FullForm, SKK, withEverything);
    room.form->resize(800, 600);
    settle();
    room.page.form->setFocus();
    for (int i = 0; i < 20; ++i) {
        FieldsRoom::press(Qt::Key_Tab);
        const QWidget *focus = QApplication::focusWidget();
        QVERIFY2(focus->visibleRegion().boundingRect().height() >= qMin(focus->height(), 60),
                 qPrintable(focus->objectName()));
    }
    for (QLineEdit *line : {room.page.pScript, room.page.from}) {
        line->setFocus(); // by the program
        QCOMPARE(line->visibleRegion().boundingRect(), line->rect());
    }
    FieldsRoom::press(Qt::Key_Return);
    QCOMPARE(room.page.marks->visibleRegion().boundingRect(), room.page.marks->rect());
}

void TestEditorRoom::cursorInTheTextIsInView()
{
    const Letters letters(24);
    const FieldsRoom room(FullForm, SKK, withEverything);
    room.form->resize(800, 600);
    settle();
    const auto cursorShown = [&room] {
        return room.page.text->viewport()->visibleRegion().contains(room.page.text->cursorRect().center());
    };
    for (int i = 0; i < 12; ++i) {
        FieldsRoom::type("СТРОКА\n");
        QVERIFY2(cursorShown(), qPrintable(QString::number(i)));
    }
    FieldsRoom::press(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(cursorShown());
    room.page.form->setFocus();
    room.page.address->setFocus();
    FieldsRoom::press(Qt::Key_Tab);
    QVERIFY(cursorShown());
    QVERIFY(room.page.text->visibleRegion().boundingRect().height() >= 150);
}

void TestEditorRoom::fieldOfAFaultIsInView()
{
    const Letters letters(24);
    const FieldsRoom room(FullForm, CKS, withEverything);
    room.form->resize(800, 600);
    FieldsRoom::type("ТЕКСТ");
    FieldsRoom::press(Qt::Key_Return, Qt::ControlModifier);
    settle();
    QCOMPARE(QApplication::focusWidget(), room.page.index);
    QCOMPARE(room.page.index->visibleRegion().boundingRect(), room.page.index->rect());
    QCOMPARE(room.page.indexFault->visibleRegion().boundingRect(), room.page.indexFault->rect());
}

void TestEditorRoom::zoomKeepsTheRoom()
{
    const Letters letters(Usual);
    const FieldsRoom room(InternationalForm, SKK, withEverything);
    room.form->resize(800, 600);
    settle();
    const int usual = room.page.fTime->width();
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus}) {
        for (int i = 0; i < 15; ++i)
            FieldsRoom::press(key, Qt::ControlModifier | Qt::KeypadModifier);
        settle();
        QVERIFY(shownWidth(*room.page.fTime) >= room.page.fTime->fontMetrics().horizontalAdvance("31 1200"));
        QCOMPARE(room.form->size(), QSize(800, 600));
    }
    QCOMPARE(room.page.fTime->width(), usual);
}

QTEST_MAIN(TestEditorRoom)
#include "test_editor_room.moc"
