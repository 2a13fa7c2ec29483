#include "ui/widgets/layouts.h"

#include <QScrollArea>

namespace
{
constexpr int Spacing = 2;

void shape(QLayout *layout, int margin)
{
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(Spacing);
}
} // namespace

QGridLayout0::QGridLayout0(QWidget *parent) : QGridLayout(parent)
{
    shape(this, 0);
}
QGridLayout1::QGridLayout1(QWidget *parent) : QGridLayout(parent)
{
    shape(this, 1);
}
QHBoxLayout0::QHBoxLayout0(QWidget *parent) : QHBoxLayout(parent)
{
    shape(this, 0);
}
QHBoxLayout1::QHBoxLayout1(QWidget *parent) : QHBoxLayout(parent)
{
    shape(this, 1);
}
QVBoxLayout0::QVBoxLayout0(QWidget *parent) : QVBoxLayout(parent)
{
    shape(this, 0);
}
QVBoxLayout1::QVBoxLayout1(QWidget *parent) : QVBoxLayout(parent)
{
    shape(this, 1);
}
QVBoxLayoutMS::QVBoxLayoutMS(QWidget *parent) : QVBoxLayout(parent)
{
    shape(this, 4);
}

QGroupBox1::QGroupBox1(const QString &title, QWidget *parent)
    : QGroupBox(title, parent), grid(new QGridLayout1(this))
{
}

QVBoxLayoutMS *newVBoxLayout()
{
    return new QVBoxLayoutMS;
}

QVBoxLayoutMS *newScrollingRows(QWidget *page)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget;
    auto *rows = new QVBoxLayoutMS(content);
    area->setWidget(content);
    (new QVBoxLayout0(page))->addWidget(area);
    return rows;
}

void orderTabs(const QList<QWidget *> &controls)
{
    QWidget *former = nullptr;
    for (QWidget *control : controls) {
        if (control == nullptr)
            continue;
        if (former != nullptr)
            QWidget::setTabOrder(former, control);
        former = control;
    }
}
