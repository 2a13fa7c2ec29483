// Chapter of FormMain: the status strip between menu and tabs.

#include "app/options.h"
#include "ui/form_main.h"
#include "ui/widgets/label_clickable.h"
#include "ui/window/status_strip.h"

namespace
{
QString networkName()
{
    return Options.processMode == CKS   ? QStringLiteral("ЦКС")
           : Options.processMode == SKK ? QStringLiteral("СКК")
                                        : QStringLiteral("ПК");
}
} // namespace

void FormMain::buildStrip()
{
    struct Click {
        CLabelClickable *CStatusStrip::*label;
        void (FormMain::*clicked)();
    };
    static const Click clicks[] = {
        {&CStatusStrip::labelScanCountdown, &FormMain::clickedLabelScanDirsTimeout},
        {&CStatusStrip::labelPKout, &FormMain::clickedLabelPKout},
        {&CStatusStrip::labelPKin, &FormMain::clickedLabelPKin},
        {&CStatusStrip::labelAutomatic, &FormMain::toggleAutomaticMode},
        {&CStatusStrip::labelLinkState, &FormMain::clickedLabelConnectString},
    };
    strip = new CStatusStrip(this);
    strip->labelNetName->setText(networkName());
    for (const Click &click : clicks)
        connect(strip->*click.label, &CLabelClickable::clicked, this, click.clicked);
    sizeStrip();
}

void FormMain::sizeStrip()
{
    strip->fit(width(), Options.usePrf ? 2 : 1);
}
