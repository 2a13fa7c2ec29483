// Chapter of FormMain: the tab of what waits to go out, and the scan that fills it.

#include "app/state.h"
#include "ui/form_main.h"
#include "ui/pages/send_page.h"

#include <QTableView>

QWidget *FormMain::buildSendPage()
{
    return sendPage = new CSendPage(modelSend, modelSendBad);
}

void FormMain::scanDir()
{
    if (sendMenuOpen)
        return;
    State.scanFoundCount = applySendQueue(scanSendQueue(), modelSend, modelSendBad);
    sendPage->tableSendBad->setVisible(modelSendBad.rowCount() > 0);
}
