#include "text/sending_form.h"

#include "app/options.h"
#include "text/marks.h"

namespace
{
constexpr int ShortestCentreNumber = 6;

bool standsBetweenMarks(const QString &text)
{
    const int start = text.indexOf(Marks::Start);
    return start >= 0 && text.indexOf(Marks::End, start + Marks::StartLength) >= 0;
}

SendingForm switchedForm(const QString &text, bool hasCategory)
{
    SendingForm form;
    if (!hasCategory) {
        form.title = QStringLiteral("Отправка текста");
        form.text = text;
        form.centreOffered = standsBetweenMarks(text);
        return form;
    }
    form.title = QStringLiteral("Отправка телеграммы");
    form.text = Marks::Start + text + Marks::End;
    form.centreOffered = form.centreChosen = true;
    if (Options.indexCKS.size() >= ShortestCentreNumber)
        form.number = Options.indexCKS;
    return form;
}
} // namespace

SendingForm sendingForm(const QString &text, bool hasCategory)
{
    SendingForm form;
    switch (Procedure(Options.processMode)) {
    case SKK: return switchedForm(text, hasCategory);
    case Direct:
        form.title = QStringLiteral("Отправка сообщения");
        form.text = Marks::Start + QStringLiteral("\r\n") + text + QStringLiteral("\r\n") + Marks::End;
        return form;
    case CKS: break;
    }
    form.title = QStringLiteral("Отправка телеграммы");
    form.text = text;
    return form;
}
