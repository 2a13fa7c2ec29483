#include "ui/window/status_strip.h"

#include "text/utils.h"
#include "ui/widgets/label_clickable.h"
#include "ui/widgets/layouts.h"
#include "ui/window/strip_layout.h"

#include <QGroupBox>

namespace
{
constexpr QRgb StripGround = qRgb(64, 64, 64);
constexpr int BoxCharacters = 24; ///< width of the first two boxes
constexpr int Spacing = 2;
constexpr int BoxMargin = 4;
constexpr int NarrowStretch = 1, WideStretch = 8;

struct PlainRow {
    QLabel *CStatusStrip::*label;
    int box, row, column;
    const char *text, *name;
};
const PlainRow plainRows[] = {
    {&CStatusStrip::labelWindow, 0, 0, 0, "", "labelWindow"},
    {&CStatusStrip::labelNetIn, 0, 0, 1, "---", "labelNetIn"},
    {&CStatusStrip::labelNetName, 0, 0, 2, "ПК", "labelNetName"},
    {&CStatusStrip::labelNetOut, 0, 0, 3, "---", "labelNetOut"},
    {&CStatusStrip::lampSent, 0, 1, 1, "\u2191", "lampSent"},
    {&CStatusStrip::labelClock, 0, 1, 2, "00:00:00", "labelClock"},
    {&CStatusStrip::lampReceived, 0, 1, 3, "\u2193", "lampReceived"},
    {&CStatusStrip::labelScanResult, 0, 2, 0, "000", "labelScanResult"},
    {&CStatusStrip::labelPKName, 0, 2, 2, "ПК", "labelPKName"},
    {&CStatusStrip::labelAutomaticName, 1, 0, 0, "Режим (Alt+A)", "labelAutomaticName"},
    {&CStatusStrip::labelTlgModeName, 1, 1, 0, "Состояние", "labelTlgModeName"},
    {&CStatusStrip::labelTlgMode, 1, 1, 1, "---", "labelTlgMode"},
    {&CStatusStrip::labelPrfState, 2, 1, 0, "", "labelPrfState"},
    {&CStatusStrip::labelReserved, 2, 2, 0, "", "labelReserved"},
};

struct ClickRow {
    CLabelClickable *CStatusStrip::*label;
    int box, row, column;
    const char *text, *name;
};
const ClickRow clickRows[] = {
    {&CStatusStrip::labelScanCountdown, 0, 1, 0, "000", "labelScanCountdown"},
    {&CStatusStrip::labelPKout, 0, 2, 1, "---", "labelPKout"},
    {&CStatusStrip::labelPKin, 0, 2, 3, "---", "labelPKin"},
    {&CStatusStrip::labelAutomatic, 1, 0, 1, "---", "labelAutomatic"},
    {&CStatusStrip::labelLinkState, 2, 0, 0, "", "labelLinkState"},
};

void placeLabel(QLabel *label, QGridLayout *grid, int row, int column, const char *name)
{
    label->setObjectName(QString::fromLatin1(name));
    grid->addWidget(label, row, column);
}

} // namespace

CStatusStrip::CStatusStrip(QWidget *parent) : QWidget(parent), m_layout(new CStripLayout(this))
{
    setObjectName(QStringLiteral("strip"));
    QPalette ground = paletteOf(White);
    ground.setColor(QPalette::All, QPalette::Window, StripGround);
    setPalette(ground);
    setAutoFillBackground(true);
    for (size_t i = 0; i < boxes.size(); ++i) {
        boxes[i] = new QGroupBox;
        boxes[i]->setObjectName(QStringLiteral("stripBox%1").arg(i + 1));
        m_layout->addWidget(boxes[i], i + 1 < boxes.size() ? NarrowStretch : WideStretch);
        buildBox(boxes[i], int(i));
    }
    shapeLabels();
}

void CStatusStrip::buildBox(QGroupBox *box, int index)
{
    box->setAutoFillBackground(true);
    auto *grid = new QGridLayout0(box);
    grid->setContentsMargins(BoxMargin, BoxMargin, BoxMargin, BoxMargin);
    for (const PlainRow &row : plainRows)
        if (row.box == index)
            placeLabel(this->*row.label = new QLabel(QString::fromUtf8(row.text)), grid, row.row, row.column,
                       row.name);
    for (const ClickRow &row : clickRows)
        if (row.box == index)
            placeLabel(this->*row.label = new CLabelClickable(QString::fromUtf8(row.text)), grid, row.row,
                       row.column, row.name);
}

void CStatusStrip::shapeLabels()
{
    labelClock->setStyleSheet(QStringLiteral("QLabel { color : silver; }"));
    setColor(lampSent, Black);
    setColor(lampReceived, Black);
    for (QLabel *label : {static_cast<QLabel *>(labelLinkState), labelPrfState, labelReserved}) {
        // A long state text wraps onto the rows that are free, and never pushes the window wider.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        showState(label, QString());
    }
    // In the largest letters the words wrap, and the column of the modes keeps its room.
    labelAutomaticName->setWordWrap(true);
    static_cast<QGridLayout *>(boxes[1]->layout())->setColumnStretch(0, 1);
}

QPalette CStatusStrip::paletteOf(Color color)
{
    static const QColor colors[ColorCount] = {Qt::white, Qt::red, Qt::yellow, Qt::green, Qt::black};
    QPalette palette;
    palette.setColor(QPalette::All, QPalette::WindowText, colors[color]);
    return palette;
}

void CStatusStrip::setColor(QLabel *label, Color color)
{
    label->setPalette(paletteOf(color));
}

void CStatusStrip::showState(QLabel *label, const QString &text)
{
    label->setText(text);
    label->setToolTip(text);
    label->setVisible(label == labelLinkState || !text.isEmpty());
}

// Boxes of three rows of figures; the third box has its lines below them where it has no room beside them.
void CStatusStrip::fit(int width, int stateLines)
{
    labelClock->setFont(font()); // its style sheet keeps it from following
    const QMargins frame = boxes[2]->contentsMargins();
    m_layout->setSizes(CUtils::txtGUIWidth(BoxCharacters, font()), boxes[0]->sizeHint().height(),
                       stateLines * fontMetrics().lineSpacing() + (stateLines - 1) * Spacing + 2 * BoxMargin +
                           frame.top() + frame.bottom());
    setFixedHeight(m_layout->heightFor(width));
}
