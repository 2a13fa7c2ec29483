#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QtTest>

/// The letters of the program at \a zoom times their size, while it lives.
class LargeLetters
{
public:
    explicit LargeLetters(int zoom) : m_usual(QApplication::font())
    {
        QFont font = m_usual;
        font.setPointSizeF(m_usual.pointSizeF() * zoom);
        QApplication::setFont(font);
    }
    ~LargeLetters() { QApplication::setFont(m_usual); }

private:
    QFont m_usual;
};

/// Drags \a dialog as small as it goes: it is inside the screen, no word of it is cut, and its text view
/// "text" still shows three lines.
inline void expectRoom(QDialog &dialog)
{
    dialog.resize(1, 1); // by the frame's edge
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    QCOMPARE(dialog.size().boundedTo(screen), dialog.size());
    for (const QWidget *widget : dialog.findChildren<QWidget *>()) {
        const bool holdsWords = qobject_cast<const QLabel *>(widget) != nullptr ||
                                qobject_cast<const QAbstractButton *>(widget) != nullptr ||
                                qobject_cast<const QComboBox *>(widget) != nullptr ||
                                qobject_cast<const QDateTimeEdit *>(widget) != nullptr;
        if (!holdsWords || !widget->isVisible())
            continue;
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), qPrintable(widget->objectName()));
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), qPrintable(widget->objectName()));
        QVERIFY(dialog.rect().contains(QRect(widget->mapTo(&dialog, QPoint()), widget->size())));
    }
    const auto *text = dialog.findChild<QPlainTextEdit *>(QStringLiteral("text"));
    QVERIFY(text->height() >= 3 * text->fontMetrics().lineSpacing());
}
