#include "ui/pages/editor_page.h"

#include "text/telegram_index.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextOption>
#include <QTimer>

namespace
{
constexpr int RowSpacing = 2;
constexpr int LeastTextLines = 5;

template <class Control> Control *named(Control *control, const char *name)
{
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QPushButton *newButton(const QString &words, const char *name)
{
    return named(new QPushButton(words), name);
}

QLabel *newMessageLabel(const char *name)
{
    auto *label = named(new QLabel, name);
    QPalette colours;
    colours.setColor(QPalette::WindowText, Qt::red);
    label->setPalette(colours);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QComboBox *newCombo(const char *name)
{
    auto *combo = named(new QComboBox, name);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return combo;
}

/// The keyboard goes to \a button as the mouse would bring it there, so that the field it was in is left.
void giveKey(QPushButton *button, const QString &key)
{
    for (const QKeySequence &sequence : QKeySequence::listFromString(key)) {
        auto *shortcut = new QShortcut(sequence, button);
        shortcut->setAutoRepeat(false);
        QObject::connect(shortcut, &QShortcut::activated, button, [button] {
            button->setFocus(Qt::ShortcutFocusReason);
            button->click();
        });
    }
    button->setToolTip(key.section(QStringLiteral("; "), 0, 0));
}

bool isForTheTabs(const QKeyEvent &event)
{
    return event.modifiers().testFlag(Qt::ControlModifier) &&
           (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab);
}

bool isByKey(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

/// Makes \a line just wide enough for \a widest and for what it shows while it is empty.
void fixWidth(QLineEdit *line, const QString &widest)
{
    const QFontMetrics font = line->fontMetrics();
    const int text = qMax(font.horizontalAdvance(widest), font.horizontalAdvance(line->placeholderText()));
    line->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); // for the rows: it never fills one
    const int around = line->minimumSizeHint().width() - font.maxWidth();
    line->setFixedWidth(
        qMax(line->minimumSizeHint().width(), text + around + font.horizontalAdvance(QLatin1Char('0'))));
}
} // namespace

CEditorPage::CEditorPage(QWidget *parent)
    : QWidget(parent), form(newCombo("editorForm")), indexFault(newMessageLabel("editorIndexFault")),
      dropped(newMessageLabel("editorDropped")),
      cryptoMode(named(new QCheckBox(QStringLiteral("Режим криптограммы")), "editorCryptoMode")),
      category(newCombo("editorCategory")), series(newCombo("editorSeries")),
      index(named(new QLineEdit, "editorIndex")), from(named(new QLineEdit, "editorFrom")),
      wordsCount(named(new QLineEditBlocked, "editorWordsCount")),
      time(named(new QLineEditBlocked, "editorTime")), marks(named(new QLineEdit, "editorMarks")),
      address(named(new QLineEdit, "editorAddress")), fKassa(named(new QLineEdit, "editorFKassa")),
      fTo(named(new QLineEdit, "editorFTo")), fFrom(named(new QLineEdit, "editorFFrom")),
      fWordsCount(named(new QLineEditBlocked, "editorFWordsCount")),
      fTime(named(new QLineEditBlocked, "editorFTime")), text(named(new QPlainTextEdit, "editorText")),
      pScript(named(new QLineEdit, "editorPScript")), operators(newCombo("editorOperator")),
      clear(newButton(QStringLiteral("Очистить"), "editorClearButton")),
      load(newButton(QStringLiteral("Загрузить"), "editorLoadButton")),
      attach(newButton(QStringLiteral("Добавить вложение"), "editorAttachButton")),
      save(newButton(QStringLiteral("Сохранить"), "editorSaveButton")),
      toPerforator(newButton(QStringLiteral("Вывести на ПЛ"), "editorToPerforatorButton")),
      fromPerforator(newButton(QStringLiteral("Ввести с ПЛ"), "editorFromPerforatorButton")),
      send(newButton(QStringLiteral("Отправить"), "editorSendButton")),
      print(newButton(QStringLiteral("Распечатать"), "editorPrintButton")), m_marks(new QActionGroup(this))
{
    setObjectName(QStringLiteral("tabEditor"));
    dropped->setWordWrap(true);
    dropped->hide();
    series->addItems({QStringLiteral("01"), QStringLiteral("02")});
    index->setMaxLength(TelegramIndexLength);
    index->setPlaceholderText(QStringLiteral("000000"));
    time->setPlaceholderText(QStringLiteral("DD/MM HHMM"));
    text->setTabChangesFocus(true);
    // It takes what the rows leave, down to its least height; only then the form begins to scroll.
    text->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    // Breaking a long run of letters anywhere would take seconds: the time grows with the square of its
    // length.
    text->setWordWrapMode(QTextOption::WordWrap);
    m_marks->setExclusive(true);
    marks->setContextMenuPolicy(Qt::CustomContextMenu);
    text->setContextMenuPolicy(Qt::CustomContextMenu);
    placeRows();
    giveKeys();
    connectFields();
    sizeFields();
}

void CEditorPage::placeRows()
{
    const auto words = [] { return new QLabel(QStringLiteral(" Слов")); };
    const auto time_ = [] { return new QLabel(QStringLiteral(" Время")); };
    const auto equals = [] { return new QLabel(QStringLiteral("=")); };
    auto *rows = newScrollingRows(this);
    rows->addWidget(newFlowRow({form, cryptoMode, indexFault}));
    rows->addWidget(dropped);
    rows->addWidget(newRow(CategoryRow, QStringLiteral("Категория"), {category},
                           {new QLabel(QStringLiteral("Индекс")), series, index}));
    rows->addWidget(newRow(HeaderRow, QStringLiteral("Заголовок"), {from},
                           {words(), wordsCount, time_(), time, equals()}));
    rows->addWidget(newRow(MarksRow, QStringLiteral("Отметки  "), {marks}));
    rows->addWidget(newRow(AddressRow, QStringLiteral("Адрес    "), {address, equals()}));
    rows->addWidget(newRow(KassaRow, QStringLiteral(" Кассовый "), {fKassa}));
    rows->addWidget(newRow(ToRow, QStringLiteral(" Куда "), {fTo}));
    rows->addWidget(
        newRow(FromRow, QStringLiteral(" Откуда "), {fFrom}, {words(), fWordsCount, time_(), fTime}));
    rows->addWidget(text, 1);
    rows->addWidget(newRow(SignatureRow, QStringLiteral("Подпись"), {pScript}));
    rows->addWidget(operators, 0, Qt::AlignLeft);
    const Widgets buttons{clear, load, attach, save, toPerforator, fromPerforator, send, print};
    rows->addWidget(newFlowRow(buttons));
    orderTabs(rowFields() + buttons);
}

QWidget *CEditorPage::newRow(FormRow row, const QString &title, const Widgets &fields, const Widgets &behind)
{
    auto *whole = new QWidget;
    auto *parts = new CFlowLayout(0, RowSpacing, whole);
    parts->setFillsRows(true);
    m_titles << new QLabel(title);
    for (const Widgets &widgets : {Widgets{m_titles.last()} + fields, behind}) {
        if (widgets.isEmpty())
            continue;
        auto *part = new QWidget;
        auto *line = new QHBoxLayout0(part);
        for (QWidget *widget : widgets)
            line->addWidget(widget);
        parts->addWidget(part);
    }
    whole->hide();
    m_rows[row] = whole;
    return whole;
}

CEditorPage::Widgets CEditorPage::rowFields() const
{
    return {form,    cryptoMode, category, series, index,       from,  wordsCount, time,    marks,
            address, fKassa,     fTo,      fFrom,  fWordsCount, fTime, text,       pScript, operators};
}

void CEditorPage::giveKeys()
{
    giveKey(clear, QStringLiteral("Ctrl+N"));
    giveKey(load, QStringLiteral("Ctrl+O"));
    giveKey(attach, QStringLiteral("Ctrl+I"));
    giveKey(save, QStringLiteral("Ctrl+S"));
    giveKey(toPerforator, QStringLiteral("F6"));
    giveKey(fromPerforator, QStringLiteral("F7"));
    giveKey(send, QStringLiteral("Ctrl+Enter; Ctrl+Return"));
    giveKey(print, QStringLiteral("Ctrl+P"));
}

void CEditorPage::connectFields()
{
    connect(text, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (text->hasFocus())
            showPart(text->viewport(), text->cursorRect());
    });
    connect(marks, &QWidget::customContextMenuRequested, this, &CEditorPage::popUpMarks);
    for (QWidget *field : rowFields()) {
        field->installEventFilter(this);
        if (auto *line = qobject_cast<QLineEdit *>(field))
            connect(line, &QLineEdit::returnPressed, this, [this, line] { goOn(line); });
    }
}

bool CEditorPage::eventFilter(QObject *object, QEvent *event)
{
    auto *field = qobject_cast<QWidget *>(object);
    if (event->type() == QEvent::KeyPress && isForTheTabs(*static_cast<QKeyEvent *>(event))) {
        event->ignore(); // a list would look for an entry of that name
        return true;
    }
    if (event->type() == QEvent::FocusIn &&
        (field != text || isByKey(static_cast<QFocusEvent *>(event)->reason())))
        showField(field);
    if (event->type() == QEvent::FocusOut) {
        // Neither a menu of the field's own nor another window takes the operator out of the row.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            emit left(field);
    }
    return QWidget::eventFilter(object, event);
}

// Of a widget the area itself would show no more than the cursor.
void CEditorPage::showField(QWidget *field)
{
    showPart(field, field->rect());
}

void CEditorPage::showPart(const QWidget *field, const QRect &part)
{
    auto *area = findChild<QScrollArea *>();
    const QRect place(field->mapTo(area->widget(), part.topLeft()), part.size());
    for (const QPoint &corner : {place.bottomRight() + QPoint(1, 1), place.topLeft()})
        area->ensureVisible(corner.x(), corner.y(), 0, 0);
}

/// The keyboard goes to the next field that the operator fills; behind the last one, to sending.
void CEditorPage::goOn(QWidget *field)
{
    const Widgets fields = rowFields();
    for (int i = fields.indexOf(field) + 1; i < fields.size(); ++i) {
        const auto *line = qobject_cast<QLineEdit *>(fields[i]);
        if (fields[i]->isVisible() && fields[i]->isEnabled() && (line == nullptr || !line->isReadOnly()))
            return fields[i]->setFocus(Qt::TabFocusReason);
    }
    QWidget *last = send->isEnabled() ? static_cast<QWidget *>(send) : text;
    last->setFocus(Qt::TabFocusReason);
}

void CEditorPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The fields are sized once they have taken the new font as well.
    if (event->type() == QEvent::FontChange)
        QTimer::singleShot(0, this, &CEditorPage::sizeFields);
}

void CEditorPage::sizeFields()
{
    fixWidth(index, QStringLiteral("0000000"));
    fixWidth(wordsCount, QStringLiteral("00000"));
    fixWidth(time, QStringLiteral("00/00 0000"));
    fixWidth(fWordsCount, QStringLiteral("0000/0000"));
    fixWidth(fTime, QStringLiteral("00 0000"));
    int widest = 0;
    for (QLabel *title : m_titles)
        widest = qMax(widest, title->sizeHint().width());
    for (QLabel *title : m_titles)
        title->setMinimumWidth(widest);
    text->setMinimumHeight(LeastTextLines * text->fontMetrics().lineSpacing());
}

void CEditorPage::showRows(const FormRows &rows)
{
    for (size_t row = 0; row < rows.size(); ++row)
        m_rows[row]->setVisible(rows[row]);
    m_shown = rows;
}

TelegramFields CEditorPage::fields() const
{
    TelegramFields fields;
    fields.category = category->currentText();
    fields.secondSeries = series->currentIndex() == 1;
    fields.index = index->text();
    fields.header = from->text();
    fields.headerWords = wordsCount->text();
    fields.headerTime = time->text();
    fields.marks = marks->text();
    fields.address = address->text();
    fields.kassa = fKassa->text();
    fields.to = fTo->text();
    fields.from = fFrom->text();
    fields.fromWords = fWordsCount->text();
    fields.fromTime = fTime->text();
    fields.text = text->toPlainText();
    fields.signature = pScript->text();
    return fields;
}

void CEditorPage::setFields(const TelegramFields &fields)
{
    if (m_shown[CategoryRow]) {
        category->setCurrentText(fields.category);
        series->setCurrentIndex(fields.secondSeries ? 1 : 0);
        index->setText(fields.index);
    }
    const struct {
        FormRow row;
        QLineEdit *field;
        QString text;
    } lines[] = {
        {HeaderRow, from, fields.header},
        {MarksRow, marks, fields.marks},
        {AddressRow, address, fields.address},
        {KassaRow, fKassa, fields.kassa},
        {ToRow, fTo, fields.to},
        {FromRow, fFrom, fields.from},
        {SignatureRow, pScript, fields.signature},
    };
    for (const auto &line : lines)
        if (m_shown[line.row])
            line.field->setText(line.text);
}

void CEditorPage::setCategories(const QStringList &categories)
{
    const QString former = category->currentText();
    {
        const QSignalBlocker quiet(category);
        category->clear();
        category->addItems(categories);
        category->setCurrentIndex(qMax(0, category->findText(former)));
    }
    if (category->currentText() != former)
        emit category->currentTextChanged(category->currentText());
}

void CEditorPage::setMarks(const QStringList &ready)
{
    m_marks->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    qDeleteAll(m_marks->actions());
    for (const QString &mark : ready) {
        QAction *action = m_marks->addAction(mark);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, mark] { emit markChosen(mark); });
    }
}

void CEditorPage::popUpMarks(const QPoint &point)
{
    for (QAction *action : m_marks->actions())
        action->setChecked(action->text() == marks->text());
    QMenu menu;
    menu.setObjectName(QStringLiteral("editorMarksMenu"));
    menu.addActions(m_marks->actions());
    menu.exec(marks->mapToGlobal(point));
}

// What both have at their ends stays, and with it the cursor.
void CEditorPage::replaceText(const QString &written)
{
    const QString former = text->toPlainText();
    const int common = qMin(former.size(), written.size());
    int head = 0, tail = 0;
    while (head < common && former.at(head) == written.at(head))
        ++head;
    while (tail < common - head &&
           former.at(former.size() - 1 - tail) == written.at(written.size() - 1 - tail))
        ++tail;
    if (former.size() == written.size() && head == common)
        return;
    QTextCursor part(text->document());
    part.setPosition(head);
    part.setPosition(former.size() - tail, QTextCursor::KeepAnchor);
    part.insertText(written.mid(head, written.size() - tail - head));
}

void CEditorPage::replaceLine(QLineEdit *line, const QString &written)
{
    const int cursor = line->cursorPosition();
    if (line->text() != written) {
        line->selectAll();
        line->insert(written);
        line->setCursorPosition(qMin(cursor, written.size()));
    }
    line->setModified(false);
}
