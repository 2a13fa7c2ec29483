// The panel above the roll: date, and the row of search and switches that its arrow opens.

#include "app/clock.h"
#include "app/options.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/arrow_button.h"
#include "ui/widgets/flow_layout.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace
{
constexpr int SearchLength = 20;
constexpr int SwitchSpacing = 6;
const QChar ArrowDown(0x2193);
const QChar ArrowUp(0x2191);

// A font that inherits nothing, for a widget inside one with another font.
QFont explicitFont(const QFont &wanted)
{
    QFont font = wanted;
    font.setFamilies({wanted.family()});
    font.setFamily(wanted.family());
    font.setWeight(wanted.weight());
    font.setItalic(wanted.italic());
    font.setUnderline(wanted.underline());
    font.setStrikeOut(wanted.strikeOut());
    font.setHintingPreference(wanted.hintingPreference());
    font.setStyleHint(wanted.styleHint(), wanted.styleStrategy());
    if (wanted.pointSizeF() > 0)
        font.setPointSizeF(wanted.pointSizeF());
    return font;
}
} // namespace

void CProtocolWidget::buildPanel()
{
    m_panel = new QWidget;
    m_panel->setObjectName(QStringLiteral("protocolPanel"));
    m_panel->setAutoFillBackground(true);
    QPalette palette = m_panel->palette();
    palette.setColor(QPalette::Window, QColor(96, 96, 160));
    palette.setColor(QPalette::WindowText, Qt::white);
    m_panel->setPalette(palette);
    m_dateEdit = new QDateEdit(Time.date);
    m_dateEdit->setObjectName(QStringLiteral("protocolDate"));
    m_dateEdit->setDisplayFormat(CTime::formatDD_MM_YYYY);
    m_dateEdit->setCalendarPopup(true);
    m_dateEdit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_moreButton = new CArrowButton(ArrowDown);
    m_moreButton->setObjectName(QStringLiteral("protocolMore"));
    m_moreButton->setFlat(true);
    palette.setColor(QPalette::ButtonText, Qt::white);
    m_moreButton->setPalette(palette);
    m_moreButton->setFocusPolicy(Qt::TabFocus);

    auto *head = new QHBoxLayout;
    head->addWidget(m_dateEdit);
    head->addWidget(m_moreButton);
    head->addStretch();
    auto *rows = new QVBoxLayout(m_panel);
    rows->setContentsMargins(4, 2, 4, 2);
    rows->setSpacing(2);
    rows->addLayout(head);
    buildSearchRow();
    rows->addWidget(m_searchRow);
    m_panel->installEventFilter(this);
    connect(m_dateEdit, &QDateEdit::dateChanged, this, &CProtocolWidget::slotProtocolDateChanged);
    connect(m_moreButton, &QPushButton::pressed, this, &CProtocolWidget::toggleSearchRow);
}

void CProtocolWidget::buildSearchRow()
{
    m_searchRow = new QWidget;
    m_searchRow->setObjectName(QStringLiteral("protocolSearchRow"));
    auto *row = new CFlowLayout(0, SwitchSpacing, m_searchRow);
    m_search = new QLineEdit;
    m_search->setObjectName(QStringLiteral("protocolSearch"));
    m_search->setPlaceholderText(QStringLiteral("Найти"));
    m_search->setMaxLength(SearchLength);
    row->addWidget(m_search);
    connect(m_search, &QLineEdit::textChanged, this, &CProtocolWidget::slotProtocolSearchChanged);
    connect(m_search, &QLineEdit::returnPressed, this, &CProtocolWidget::slotProtocolSearchReturnPressed);

    m_boxRegisters = newCheckBox(QStringLiteral("protocolRegisters"), QStringLiteral("Регистры"), false);
    m_boxInfo = newCheckBox(QStringLiteral("protocolInfo"), QStringLiteral("Информация"), true);
    if (Options.processMode == SKK)
        m_boxCmd = newCheckBox(QStringLiteral("protocolCommands"), QStringLiteral("Команды"), false);
    m_boxSplit = newCheckBox(QStringLiteral("protocolSplit"), QStringLiteral("Разделить"), false);
    m_boxNational = newCheckBox(QStringLiteral("protocolNational"), QStringLiteral("Язык"), false);
    m_boxNational->setVisible(Options.nationalLanguageUse == Tatar);
    m_searchRow->hide();
}

QCheckBox *CProtocolWidget::newCheckBox(const QString &name, const QString &label, bool on)
{
    auto *box = new QCheckBox(label);
    box->setObjectName(name);
    box->setChecked(on);
    box->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard with the roll
    m_searchRow->layout()->addWidget(box);
    connect(box, &QCheckBox::toggled, this, &CProtocolWidget::slotProtocolOptionsChanged);
    return box;
}

void CProtocolWidget::toggleSearchRow()
{
    const bool open = m_searchRow->isHidden();
    if (m_searchRow->isAncestorOf(QApplication::focusWidget()))
        setFocus(); // not to whatever control comes next
    m_searchRow->setVisible(open);
    m_moreButton->setText(open ? ArrowUp : ArrowDown);
}

// The roll has a font of its own, its panel that of the window.
void CProtocolWidget::updatePanelFont()
{
    m_panel->setFont(explicitFont(QApplication::font()));
    m_moreButton->setFixedWidth(m_moreButton->fontMetrics().horizontalAdvance(QStringLiteral("00")));
}

void CProtocolWidget::setShowRegisters(bool on)
{
    m_boxRegisters->setChecked(on);
}

void CProtocolWidget::setShowInfo(bool on)
{
    m_boxInfo->setChecked(on);
}

void CProtocolWidget::setShowCmd(bool on)
{
    if (m_boxCmd != nullptr)
        m_boxCmd->setChecked(on);
}

void CProtocolWidget::slotProtocolOptionsChanged()
{
    const bool national = Options.nationalLanguageUse == Tatar;
    m_boxNational->setVisible(national);
    m_showRegisters = m_boxRegisters->isChecked();
    m_showInfo = m_boxInfo->isChecked();
    m_showCmd = m_boxCmd != nullptr && m_boxCmd->isChecked();
    m_showSplit = m_boxSplit->isChecked();
    m_showNational = national && m_boxNational->isChecked();
    const bool atEnd = m_bar->value() == m_bar->maximum();
    const bool sameList =
        m_splitter.rules() == rulesInForce() && (m_shown == &source().list() || isFiltered());
    if (!sameList)
        showListAnew();
    updateRange(atEnd);
    updateAll();
}
