#include "procedures/process.h"

#include "app/options.h"
#include "link/tlg_thread.h"
#include "text/mtk2.h"

void CProcess::processReceiveCmd(QString) {}

void CProcess::SendTlgText(QString text)
{
    if (text.isEmpty())
        return;
    if (Options.nationalLanguageUse != NoNationalLanguage)
        maskNationalLanguage(text);
    text.replace(QLatin1Char('<'), QLatin1Char('\r'));
    text.replace(QLatin1Char('>'), QLatin1Char('\n'));
    TlgThread.sendBuffer.mAppend(upperMTK2(text));
}
