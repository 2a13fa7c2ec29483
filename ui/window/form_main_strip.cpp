// Chapter of FormMain: the status strip between menu and tabs.

#include "app/options.h"
#include "text/utils.h"
#include "ui/form_main.h"
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
    QLabel *FormMain::*label;
    int box, row, column;
    const char *text, *name;
};
const PlainRow plainRows[] = {
    {&FormMain::labelWindow, 0, 0, 0, "", "labelWindow"},
    {&FormMain::labelNetIn, 0, 0, 1, "---", "labelNetIn"},
    {&FormMain::labelNetName, 0, 0, 2, "ПК", "labelNetName"},
    {&FormMain::labelNetOut, 0, 0, 3, "---", "labelNetOut"},
    {&FormMain::lampSent, 0, 1, 1, "\u2191", "lampSent"},
    {&FormMain::labelClock, 0, 1, 2, "00:00:00", "labelClock"},
    {&FormMain::lampReceived, 0, 1, 3, "\u2193", "lampReceived"},
    {&FormMain::labelScanResult, 0, 2, 0, "000", "labelScanResult"},
    {&FormMain::labelPKName, 0, 2, 2, "ПК", "labelPKName"},
    {&FormMain::labelAutomaticName, 1, 0, 0, "Режим (Alt+A)", "labelAutomaticName"},
    {&FormMain::labelTlgModeName, 1, 1, 0, "Состояние", "labelTlgModeName"},
    {&FormMain::labelTlgMode, 1, 1, 1, "---", "labelTlgMode"},
    {&FormMain::labelPrfState, 2, 1, 0, "", "labelPrfState"},
    {&FormMain::labelReserved, 2, 2, 0, "", "labelReserved"},
};

struct ClickRow {
    CLabelClickable *FormMain::*label;
    int box, row, column;
    const char *text, *name;
    void (FormMain::*clicked)();
};
const ClickRow clickRows[] = {
    {&FormMain::labelScanCountdown, 0, 1, 0, "000", "labelScanCountdown",
     &FormMain::clickedLabelScanDirsTimeout},
    {&FormMain::labelPKout, 0, 2, 1, "---", "labelPKout", &FormMain::clickedLabelPKout},
    {&FormMain::labelPKin, 0, 2, 3, "---", "labelPKin", &FormMain::clickedLabelPKin},
    {&FormMain::labelAutomatic, 1, 0, 1, "---", "labelAutomatic", &FormMain::toggleAutomaticMode},
    {&FormMain::labelLinkState, 2, 0, 0, "", "labelLinkState", &FormMain::clickedLabelConnectString},
};

void placeLabel(QLabel *label, QGridLayout *grid, int row, int column, const char *name)
{
    label->setObjectName(QString::fromLatin1(name));
    grid->addWidget(label, row, column);
}

QString networkName()
{
    return Options.processMode == CKS   ? QStringLiteral("ЦКС")
           : Options.processMode == SKK ? QStringLiteral("СКК")
                                        : QStringLiteral("ПК");
}
} // namespace

void FormMain::buildPalettes()
{
    static const QColor colours[StripColorCount] = {Qt::white, Qt::red, Qt::yellow, Qt::green, Qt::black};
    for (size_t i = 0; i < palettes.size(); ++i)
        palettes[i].setColor(QPalette::All, QPalette::WindowText, colours[i]);
}

void FormMain::buildStrip()
{
    strip = new QWidget;
    strip->setObjectName(QStringLiteral("strip"));
    QPalette ground = palettes[White];
    ground.setColor(QPalette::All, QPalette::Window, StripGround);
    strip->setPalette(ground);
    strip->setAutoFillBackground(true);

    auto *boxes = new CStripLayout(strip);
    for (size_t i = 0; i < stripBoxes.size(); ++i) {
        stripBoxes[i] = new QGroupBox;
        stripBoxes[i]->setObjectName(QStringLiteral("stripBox%1").arg(i + 1));
        boxes->addWidget(stripBoxes[i], i + 1 < stripBoxes.size() ? NarrowStretch : WideStretch);
        buildStripBox(stripBoxes[i], int(i));
    }
    labelNetName->setText(networkName());
    labelClock->setStyleSheet(QStringLiteral("QLabel { color : silver; }"));
    lampSent->setPalette(palettes[Black]);
    lampReceived->setPalette(palettes[Black]);
    for (QLabel *label : {static_cast<QLabel *>(labelLinkState), labelPrfState, labelReserved}) {
        // A long state text wraps onto the rows that are free, and never pushes the window wider.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        showState(label, QString());
    }
    // In the largest letters the words wrap, and the column of the modes keeps its room.
    labelAutomaticName->setWordWrap(true);
    static_cast<QGridLayout *>(stripBoxes[1]->layout())->setColumnStretch(0, 1);
    sizeStrip();
}

void FormMain::showState(QLabel *label, const QString &text)
{
    label->setText(text);
    label->setToolTip(text);
    label->setVisible(label == labelLinkState || !text.isEmpty());
}

void FormMain::buildStripBox(QGroupBox *box, int index)
{
    box->setAutoFillBackground(true);
    auto *grid = new QGridLayout0(box);
    grid->setContentsMargins(BoxMargin, BoxMargin, BoxMargin, BoxMargin);
    for (const PlainRow &row : plainRows)
        if (row.box == index)
            placeLabel(this->*row.label = new QLabel(QString::fromUtf8(row.text)), grid, row.row, row.column,
                       row.name);
    for (const ClickRow &row : clickRows)
        if (row.box == index) {
            placeLabel(this->*row.label = new CLabelClickable(QString::fromUtf8(row.text)), grid, row.row,
                       row.column, row.name);
            connect(this->*row.label, &CLabelClickable::clicked, this, row.clicked);
        }
}

// Boxes of three rows of figures; the third box has its lines below them where it has no room beside them.
void FormMain::sizeStrip()
{
    labelClock->setFont(font()); // its style sheet keeps it from following
    const QMargins frame = stripBoxes[2]->contentsMargins();
    const int lines = Options.usePrf ? 2 : 1;
    auto *boxes = static_cast<CStripLayout *>(strip->layout());
    boxes->setSizes(CUtils::txtGUIWidth(BoxCharacters, font()), stripBoxes[0]->sizeHint().height(),
                    lines * fontMetrics().lineSpacing() + (lines - 1) * Spacing + 2 * BoxMargin +
                        frame.top() + frame.bottom());
    strip->setFixedHeight(boxes->heightFor(width()));
}
