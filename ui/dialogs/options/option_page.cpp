#include "ui/dialogs/options/option_page.h"

#include "ui/dialogs/options/font_choice.h"
#include "ui/dialogs/options/option_faults.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/spin_box_limits.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QToolButton>

namespace
{
constexpr int OpenListWidth = 12; // characters that are seen at least

/// The rows wrap where label and field do not fit side by side.
QFormLayout *newForm()
{
    auto *form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

QString noteName(const QWidget *control)
{
    return control->objectName() + QStringLiteral("Note");
}

/// A label for the reason, which takes no room while there is none.
QLabel *newNote(const QWidget *control)
{
    auto *note = new QLabel;
    note->setObjectName(noteName(control));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    paintText(note, Qt::darkRed);
    note->hide();
    return note;
}

template <class Control> Control *named(Control *control, const char *name, const char *toolTip)
{
    control->setObjectName(QString::fromLatin1(name));
    control->setToolTip(QString::fromUtf8(toolTip));
    return control;
}
} // namespace

COptionPage::COptionPage() : m_rows(newScrollingRows(this)) {}

// Rows

QGroupBox *COptionPage::beginGroup(const QString &title)
{
    auto *box = new QGroupBox(title);
    m_form = newForm();
    box->setLayout(m_form);
    m_rows->addWidget(box);
    box->installEventFilter(this);
    return box;
}

void COptionPage::endGroup()
{
    m_form = newForm();
    m_rows->addLayout(m_form);
}

void COptionPage::addRow(QWidget *widget)
{
    if (m_form == nullptr)
        endGroup();
    m_form->addRow(widget);
    widget->installEventFilter(this);
}

void COptionPage::addRow(const QString &label, std::initializer_list<QWidget *> controls)
{
    if (m_form == nullptr)
        endGroup();
    auto *across = new QHBoxLayout0;
    for (QWidget *control : controls) {
        across->addWidget(control);
        control->installEventFilter(this);
        if (control->focusPolicy() == Qt::WheelFocus)
            control->setFocusPolicy(Qt::StrongFocus);
    }
    auto *field = new QVBoxLayout0;
    field->addLayout(across);
    field->addWidget(newNote(*controls.begin()));
    auto *title = new QLabel(label);
    title->setBuddy(*controls.begin());
    title->setToolTip((*controls.begin())->toolTip());
    m_form->addRow(title, field);
}

QCheckBox *COptionPage::add(const Flag &row)
{
    auto *box = named(new QCheckBox(QString::fromUtf8(row.label)), row.name, row.toolTip);
    addRow(box);
    bind(box, faceOf(box), settingOf(row.field));
    return box;
}

QSpinBox *COptionPage::add(const Number &row)
{
    auto *box = named(new QSpinBox_Limits(row.least, row.least, row.most), row.name, row.toolTip);
    addRow(QString::fromUtf8(row.label), {box});
    bind(box, faceOf(box), settingOf(row.field));
    return box;
}

QLineEdit *COptionPage::add(const Line &row)
{
    auto *line = named(new QLineEdit, row.name, row.toolTip);
    line->setMaxLength(row.longest);
    addRow(QString::fromUtf8(row.label), {line});
    bind(line, faceOf(line), settingOf(row.field));
    if (row.reason)
        watch(line, row.reason);
    return line;
}

QComboBox *COptionPage::add(const Choice &row)
{
    QComboBox *box = newList(row.name, QString::fromUtf8(row.entries).split(QLatin1Char('|')),
                             QString::fromUtf8(row.toolTip));
    addRow(QString::fromUtf8(row.label), {box});
    bind(box, indexOf(box), settingOf(row.field));
    return box;
}

CFontChoice *COptionPage::addFont(const char *name, const QString &label, QFont COptions::*field)
{
    auto *choice = new CFontChoice(QString::fromLatin1(name), newOpenList(name, QString()));
    addRow(label, {choice->family, choice->size});
    bind(choice->family,
         {[choice] { return QVariant(choice->chosen()); },
          [choice](const QVariant &value) { choice->setChosen(value.value<QFont>()); }},
         settingOf(field));
    watch(choice->family, fontFault);
    return choice;
}

QComboBox *COptionPage::newList(const char *name, const QStringList &entries, const QString &toolTip)
{
    auto *box = new QComboBox;
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    box->addItems(entries);
    return box;
}

QComboBox *COptionPage::newOpenList(const char *name, const QString &toolTip)
{
    QComboBox *box = newList(name, {}, toolTip);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr); // it would put its own words behind what is typed
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(OpenListWidth);
    return box;
}

void COptionPage::refill(QComboBox *box, const QStringList &entries)
{
    const QString chosen = box->currentText();
    box->clear();
    box->addItems(entries);
    box->setEditText(chosen);
}

QToolButton *COptionPage::newButton(const QString &name, const QString &label, const QString &toolTip,
                                    const std::function<void()> &press)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setText(label);
    button->setToolTip(toolTip);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, press);
    return button;
}

// Settings

void COptionPage::bind(QWidget *control, const Face &face, const Setting &setting)
{
    m_bindings.push_back({control, face, setting, QVariant()});
}

void COptionPage::load()
{
    for (const Binding &binding : m_bindings)
        binding.face.show(binding.setting.value());
    loaded();
    for (Binding &binding : m_bindings) {
        binding.loaded = binding.face.shown();
        lookAgain(binding.control);
    }
    noteOutOfRange();
    m_rows->addStretch();
}

void COptionPage::apply()
{
    for (const Binding &binding : m_bindings) {
        const QVariant shown = binding.face.shown();
        if (shown != binding.loaded)
            binding.setting.set(shown);
    }
}

bool COptionPage::isChanged(const QWidget *control) const
{
    for (const Binding &binding : m_bindings)
        if (binding.control == control)
            return binding.face.shown() != binding.loaded;
    return false;
}

/// A value of the file beyond the limits of its control stays in force until the operator changes it.
void COptionPage::noteOutOfRange()
{
    for (const Binding &binding : m_bindings) {
        const auto *box = qobject_cast<QSpinBox *>(binding.control);
        const int inForce = binding.setting.value().toInt();
        if (box != nullptr && (inForce < box->minimum() || inForce > box->maximum()))
            note(binding.control, QStringLiteral("В силе значение из файла: %1").arg(inForce));
    }
}

COptionPage::Face COptionPage::faceOf(QCheckBox *box)
{
    return {[box] { return QVariant(box->isChecked()); },
            [box](const QVariant &value) { box->setChecked(value.toBool()); }};
}

COptionPage::Face COptionPage::faceOf(QGroupBox *box)
{
    return {[box] { return QVariant(box->isChecked()); },
            [box](const QVariant &value) { box->setChecked(value.toBool()); }};
}

COptionPage::Face COptionPage::faceOf(QSpinBox *box)
{
    return {[box] { return QVariant(box->value()); },
            [box](const QVariant &value) { box->setValue(value.toInt()); }};
}

COptionPage::Face COptionPage::faceOf(QLineEdit *line)
{
    return {[line] { return QVariant(line->text()); },
            [line](const QVariant &value) {
                line->setText(value.toString());
                line->setCursorPosition(0);
            }};
}

COptionPage::Face COptionPage::indexOf(QComboBox *box)
{
    return {[box] { return QVariant(box->currentIndex()); },
            [box](const QVariant &value) { box->setCurrentIndex(value.toInt()); }};
}

COptionPage::Face COptionPage::textOf(QComboBox *box)
{
    return {[box] { return QVariant(box->currentText()); },
            [box](const QVariant &value) { box->setEditText(value.toString()); }};
}

// Reasons

void COptionPage::watch(QLineEdit *line, const Reason &reason)
{
    connect(line, &QLineEdit::textChanged, this, [this, line, reason] { mark(line, reason(line->text())); });
}

void COptionPage::watch(QComboBox *box, const Reason &reason)
{
    connect(box, &QComboBox::currentTextChanged, this,
            [this, box, reason] { mark(box, reason(box->currentText())); });
}

void COptionPage::lookAgain(QWidget *control)
{
    if (auto *line = qobject_cast<QLineEdit *>(control))
        emit line->textChanged(line->text());
    else if (auto *box = qobject_cast<QComboBox *>(control); box != nullptr && box->isEditable())
        emit box->currentTextChanged(box->currentText());
}

void COptionPage::note(const QWidget *control, const QString &reason)
{
    auto *label = findChild<QLabel *>(noteName(control));
    label->setText(reason);
    label->setVisible(!reason.isEmpty());
}

void COptionPage::mark(QWidget *control, const QString &reason)
{
    note(control, reason);
    paintText(control, reason.isEmpty() ? QGuiApplication::palette().color(QPalette::Text) : Qt::red);
}

// Of a widget the area itself would show no more than its middle, and nothing of the first one behind the
// last.
void COptionPage::bringIntoView(const QWidget *control)
{
    auto *area = findChild<QScrollArea *>();
    if (control == nullptr || !area->widget()->isAncestorOf(control))
        return;
    const QRect place(control->mapTo(area->widget(), QPoint()), control->size());
    for (const QPoint &corner : {place.bottomRight() + QPoint(1, 1), place.topLeft()})
        area->ensureVisible(corner.x(), corner.y(), 0, 0);
}

// The wheel moves the page and changes a value only where the keyboard is.
bool COptionPage::eventFilter(QObject *object, QEvent *event)
{
    auto *control = qobject_cast<QWidget *>(object);
    if (event->type() == QEvent::Wheel && control != nullptr && !control->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::FocusIn && control != nullptr)
        QMetaObject::invokeMethod(
            this, [this, control = QPointer<QWidget>(control)] { bringIntoView(control); },
            Qt::QueuedConnection);
    return QWidget::eventFilter(object, event);
}
