#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

/// Sees the progress window that opens, writes down what it shows, and can press its button.
class ProgressWatch : public QObject
{
public:
    ProgressWatch() { qApp->installEventFilter(this); }

    QString title, button;
    int opened = 0;
    bool modal = false, closesItself = true;
    QPair<int, int> range;
    QList<int> values;     ///< the first as it was when shown
    QList<qint64> times;   ///< of the values, in ms since the first
    int pressAtValue = -1; ///< -1: never
    bool pressAtOnce = false;

    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *dialog = qobject_cast<QProgressDialog *>(object);
        if (dialog != nullptr && event->type() == QEvent::Show)
            look(dialog);
        return false;
    }

private:
    void look(QProgressDialog *dialog)
    {
        ++opened;
        title = dialog->windowTitle();
        button = dialog->findChild<QPushButton *>()->text();
        modal = dialog->isModal();
        closesItself = dialog->autoClose() || dialog->autoReset();
        range = {dialog->minimum(), dialog->maximum()};
        values = {dialog->value()};
        times = {0};
        m_clock.start();
        if (pressAtOnce)
            QTimer::singleShot(0, dialog->findChild<QPushButton *>(), &QPushButton::click);
        connect(dialog->findChild<QProgressBar *>(), &QProgressBar::valueChanged, this, [=](int value) {
            values << value;
            times << m_clock.elapsed();
            if (value == pressAtValue)
                dialog->findChild<QPushButton *>()->click();
        });
    }

    QElapsedTimer m_clock;
};
