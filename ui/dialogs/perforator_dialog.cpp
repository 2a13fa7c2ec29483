#include "ui/dialogs/perforator_dialog.h"

#include "app/options.h"
#include "link/prf_thread.h"
#include "text/utils.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>
#include <QVBoxLayout>

namespace
{
constexpr int Columns = 50, Lines = 10; // of text, at least
constexpr int LineLength = 72;          // of a telegram, with what the frame takes

QLabel *newState()
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
} // namespace

CPerforatorDialog::CPerforatorDialog(const QString &title, QRect COptions::*geometry, QWidget *parent)
    : CDialog(parent, geometry), m_state(newState()), m_text(newTapeText()),
      m_close(newLeaveButton("close", QStringLiteral("Закрыть")))
{
    setWindowTitle(title);
    PrfThread.Activate();
}

void CPerforatorDialog::placeRows(const QList<QWidget *> &rows, const QList<QPushButton *> &left,
                                  const QList<QPushButton *> &right)
{
    auto *all = new QVBoxLayout(this);
    for (QWidget *row : rows)
        all->addWidget(row);
    all->addLayout(newButtonRow(left, right));
    takeRoomySize();
    takePlace();
}

/// Wide enough for a line of a telegram, as far as the screen allows.
void CPerforatorDialog::takeRoomySize()
{
    const QSize least = sizeHint();
    const int wider = CUtils::txtGUIWidth(LineLength - Columns, font());
    const QSize most = QGuiApplication::primaryScreen()->availableSize() * 2 / 3;
    resize((least + QSize(wider, least.height() / 4)).boundedTo(most).expandedTo(least));
}

void CPerforatorDialog::leave()
{
    PrfThread.Deactivate();
}

// A dialog that ends by a button or by Esc gets no closing event.
void CPerforatorDialog::done(int result)
{
    leave();
    CDialog::done(result);
}

void CPerforatorDialog::closeEvent(QCloseEvent *event)
{
    leave();
    CDialog::closeEvent(event);
}
