#include "ui/pages/editor_page.h"

#include "text/telegram_index.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextOption>

namespace
{
constexpr int ButtonSpacing = 2;

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
} // namespace

CEditorPage::CEditorPage(QWidget *parent)
    : QWidget(parent), form(named(new QComboBox, "editorForm")),
      indexFault(newMessageLabel("editorIndexFault")), dropped(newMessageLabel("editorDropped")),
      cryptoMode(named(new QCheckBox(QStringLiteral("Режим криптограммы")), "editorCryptoMode")),
      category(named(new QComboBox, "editorCategory")), series(named(new QComboBox, "editorSeries")),
      index(named(new QLineEdit, "editorIndex")), from(named(new QLineEdit, "editorFrom")),
      wordsCount(named(new QLineEditBlocked, "editorWordsCount")),
      time(named(new QLineEditBlocked, "editorTime")), marks(named(new QLineEdit, "editorMarks")),
      address(named(new QLineEdit, "editorAddress")), fKassa(named(new QLineEdit, "editorFKassa")),
      fTo(named(new QLineEdit, "editorFTo")), fFrom(named(new QLineEdit, "editorFFrom")),
      fWordsCount(named(new QLineEditBlocked, "editorFWordsCount")),
      fTime(named(new QLineEditBlocked, "editorFTime")), text(named(new QPlainTextEdit, "editorText")),
      pScript(named(new QLineEdit, "editorPScript")), operators(named(new QComboBox, "editorOperator")),
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
    series->addItems({QStringLiteral("01"), QStringLiteral("02")});
    index->setMaxLength(TelegramIndexLength);
    index->setPlaceholderText(QStringLiteral("000000"));
    time->setPlaceholderText(QStringLiteral("DD/MM HHMM"));
    text->setTabChangesFocus(true);
    // Breaking a long run of letters anywhere would take seconds: the time grows with the square of its
    // length.
    text->setWordWrapMode(QTextOption::WordWrap);
    m_marks->setExclusive(true);
    marks->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(marks, &QWidget::customContextMenuRequested, this, &CEditorPage::popUpMarks);
    placeRows();
}

void CEditorPage::placeRows()
{
    const auto words = [] { return new QLabel(QStringLiteral(" Слов")); };
    const auto time_ = [] { return new QLabel(QStringLiteral(" Время")); };
    const auto equals = [] { return new QLabel(QStringLiteral("=")); };
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(newFlowRow({form, cryptoMode, indexFault, dropped}));
    rows->addWidget(newRow(CategoryRow, QStringLiteral("Категория"),
                           {category, new QLabel(QStringLiteral("Индекс")), series, index}));
    rows->addWidget(
        newRow(HeaderRow, QStringLiteral("Заголовок"), {from, words(), wordsCount, time_(), time, equals()}));
    rows->addWidget(newRow(MarksRow, QStringLiteral("Отметки  "), {marks}));
    rows->addWidget(newRow(AddressRow, QStringLiteral("Адрес    "), {address, equals()}));
    rows->addWidget(newRow(KassaRow, QStringLiteral(" Кассовый "), {fKassa}));
    rows->addWidget(newRow(ToRow, QStringLiteral(" Куда "), {fTo}));
    rows->addWidget(
        newRow(FromRow, QStringLiteral(" Откуда "), {fFrom, words(), fWordsCount, time_(), fTime}));
    rows->addWidget(text, 1);
    rows->addWidget(newRow(SignatureRow, QStringLiteral("Подпись"), {pScript}));
    rows->addWidget(operators, 0, Qt::AlignLeft);
    auto *buttons = new CFlowLayout(0, ButtonSpacing);
    for (QPushButton *button : {clear, load, attach, save, toPerforator, fromPerforator, send, print})
        buttons->addWidget(button);
    rows->addLayout(buttons);
}

QWidget *CEditorPage::newRow(FormRow row, const QString &title, std::initializer_list<QWidget *> fields)
{
    auto *whole = new QWidget;
    auto *line = new QHBoxLayout0(whole);
    line->addWidget(new QLabel(title));
    for (QWidget *field : fields)
        line->addWidget(field);
    whole->hide();
    m_rows[row] = whole;
    return whole;
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
    category->clear();
    category->addItems(categories);
    category->setCurrentIndex(qMax(0, category->findText(former)));
}

void CEditorPage::setMarks(const QStringList &ready)
{
    for (QAction *action : m_marks->actions())
        delete action;
    for (const QString &mark : ready)
        connect(m_marks->addAction(mark), &QAction::triggered, this, [this, mark] { emit markChosen(mark); });
}

void CEditorPage::popUpMarks(const QPoint &point)
{
    QMenu menu;
    menu.addActions(m_marks->actions());
    menu.exec(marks->mapToGlobal(point));
}
