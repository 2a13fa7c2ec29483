#include "ui/pages/protocol_page.h"

#include "ui/roll/protocol_widget.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"

#include <QFrame>
#include <QPushButton>

namespace
{
constexpr int ButtonMargin = 1, ButtonSpacing = 2;
}

CProtocolPage::CProtocolPage(CProtocolWidget *roll, QWidget *parent)
    : QWidget(parent), modeFrame(new QFrame), m_line(new CFlowLayout(ButtonMargin, ButtonSpacing, modeFrame))
{
    setObjectName(QStringLiteral("tabProtocol"));
    modeFrame->setObjectName(QStringLiteral("modeFrame"));
    auto *rows = new QVBoxLayout0(this);
    rows->addWidget(modeFrame);
    rows->addWidget(roll, 1);
}

QPushButton *CProtocolPage::addButton(const QString &text, const QString &name)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    // The keys go on to the line when the mouse has pressed a button.
    button->setFocusPolicy(Qt::NoFocus);
    m_line->addWidget(button);
    modeButtons << button;
    return button;
}
