#include "ui/dialogs/dialog.h"

#include "app/options.h"
#include "text/utils.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

namespace
{
constexpr int FrameButtons = 5; // the window's menu, three buttons, and what parts them from the title
}

CDialog::CDialog(QWidget *parent, QRect COptions::*place) : QDialog(parent), m_place(place) {}

// The font is the desktop's and does not follow that of the program; desktops like it bold.
int CDialog::widthOfTitle(const QString &title)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setBold(true);
    const int buttons = FrameButtons * QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int wanted = QFontMetrics(font).horizontalAdvance(title) + buttons;
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? wanted : qMin(wanted, screen->availableGeometry().width());
}

void CDialog::fitTitle()
{
    setMinimumWidth(qMax(widthOfTitle(windowTitle()), minimumSizeHint().width()));
}

bool CDialog::event(QEvent *event)
{
    const bool taken = QDialog::event(event);
    if (event->type() == QEvent::WindowTitleChange || event->type() == QEvent::LayoutRequest ||
        event->type() == QEvent::Polish)
        fitTitle();
    return taken;
}

void CDialog::takePlace()
{
    if (m_place != nullptr && Options.saveWindowPos)
        CUtils::makeGeometry(this, Options.*m_place);
}

int CDialog::run(const QString &title, QWidget *field)
{
    setWindowTitle(title);
    takePlace();
    field->setFocus();
    return QDialog::exec();
}

QPushButton *CDialog::newButton(const char *name, const QString &label, const QString &toolTip)
{
    auto *button = new QPushButton(label);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(toolTip);
    return button;
}

QPushButton *CDialog::newDefaultButton(const char *name, const QString &label, const QString &toolTip)
{
    QPushButton *button = newButton(name, label, toolTip);
    button->setDefault(true);
    return button;
}

QPushButton *CDialog::newLeaveButton(const char *name, const QString &label)
{
    QPushButton *button = newButton(name, label);
    connect(button, &QPushButton::clicked, this, &QDialog::reject);
    return button;
}

QHBoxLayout *CDialog::newButtonRow(const QList<QPushButton *> &left)
{
    auto *row = new QHBoxLayout;
    for (QPushButton *button : left)
        row->addWidget(button);
    return row;
}

QHBoxLayout *CDialog::newButtonRow(const QList<QPushButton *> &left, const QList<QPushButton *> &right)
{
    QHBoxLayout *row = newButtonRow(left);
    row->addStretch();
    for (QPushButton *button : right)
        row->addWidget(button);
    return row;
}

QLabel *CDialog::newTroubleLabel(const char *name)
{
    auto *label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    QPalette red = label->palette();
    red.setColor(QPalette::WindowText, Qt::darkRed);
    label->setPalette(red);
    return label;
}

// Every way to close a dialog ends here; a minimised one lies nowhere.
void CDialog::done(int result)
{
    if (m_place != nullptr && isVisible() && !isMinimized())
        Options.*m_place = geometry();
    QDialog::done(result);
}
