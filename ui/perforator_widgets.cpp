#include "ui/perforator_widgets.h"

#include "text/utils.h"

#include <QApplication>
#include <QDialog>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>

namespace
{
constexpr int Columns = 50, Lines = 10; // of text, at least
constexpr int LineLength = 72;          // of a telegram, with what the frame takes
} // namespace

QLabel *newPerforatorState()
{
    auto *label = new QLabel;
    label->setObjectName(QStringLiteral("state"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true); // the system's reasons may be long
    return label;
}

QTextEdit *newTapeText()
{
    auto *edit = new QTextEdit;
    edit->setObjectName(QStringLiteral("text"));
    edit->setReadOnly(true);
    edit->setTabChangesFocus(true);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QFontInfo(QApplication::font()).pointSizeF());
    edit->setFont(font);
    edit->setMinimumSize(CUtils::txtGUIWidth(Columns, font), QFontMetrics(font).lineSpacing() * Lines);
    return edit;
}

QPushButton *newDialogButton(const char *name, const QString &text)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

void setRoomySize(QDialog *dialog)
{
    const QSize least = dialog->sizeHint();
    const int wider = CUtils::txtGUIWidth(LineLength - Columns, dialog->font());
    const QSize most = QGuiApplication::primaryScreen()->availableSize() * 2 / 3;
    dialog->resize((least + QSize(wider, least.height() / 4)).boundedTo(most).expandedTo(least));
}
