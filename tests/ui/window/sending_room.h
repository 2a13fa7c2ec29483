#pragma once

#include "app/clock.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/ui/window/station.h"
#include "ui/dialogs/send_tlg_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

/// What the operator does in the dialog of a sending.
using InDialog = std::function<void(CSendTlgDialog &dialog)>;

inline void press(const QDialog &dialog, const char *button)
{
    QTest::mouseClick(dialog.findChild<QPushButton *>(button), Qt::LeftButton);
}

/// Agrees to what the dialog proposes.
inline void agree(const CSendTlgDialog &dialog)
{
    press(dialog, "send");
}

/// Sends to \a numbers, where the procedure asks for some.
inline InDialog toNumbers(const QString &numbers)
{
    return [numbers](CSendTlgDialog &dialog) {
        dialog.setNumber(numbers);
        agree(dialog);
    };
}

/// Sends at once.
inline void toLine(CSendTlgDialog &dialog)
{
    dialog.findChild<QRadioButton *>("toLine")->setChecked(true);
    agree(dialog);
}

/// A station whose window is open at the editor, with one of its forms.
class SendingRoom : public Station
{
public:
    explicit SendingRoom(int processMode, int telegramForm, const std::function<void()> &prepare = {})
        : Station(processMode,
                  [&] {
                      Options.editorInterfaceMode = telegramForm;
                      Options.interfaceModes[telegramForm].enabled = true;
                      if (prepare)
                          prepare();
                  }),
          page(*form->editorPage)
    {
        form->show();
        form->tabWidget->setCurrentWidget(&page);
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window got no keyboard");
        (void)news();
    }

    /// Fills the fields of a telegram that can go.
    void write(const QString &text, const QString &category = "П", const QString &index = "123456") const
    {
        page.category->setCurrentText(category);
        page.index->setText(index);
        page.text->setPlainText(text);
    }
    /// Presses "Отправить"; \a work deals with the dialog, which is left if it is still open. Tells whether
    /// one came.
    bool send(const InDialog &work = agree) const
    {
        bool came = false;
        QTimer::singleShot(0, [&] {
            auto *dialog = qobject_cast<CSendTlgDialog *>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                return;
            came = true;
            work(*dialog);
            dialog->close();
        });
        QTest::mouseClick(page.send, Qt::LeftButton);
        QCoreApplication::processEvents();
        return came;
    }
    /// The telegrams and records in the queue.
    [[nodiscard]] QStringList queue() const { return desk.names("out").filter("20260731"); }
    [[nodiscard]] QString queued(const QString &name) const
    {
        return QString::fromUtf8(desk.read("out/" + name));
    }
    /// The number that a restart would find.
    [[nodiscard]] static int savedNumber()
    {
        const int now = State.EditorN;
        State.EditorN = -1;
        State.Load();
        return std::exchange(State.EditorN, now);
    }
    /// "name number tries" of each row of the tab "Передача".
    [[nodiscard]] QStringList rows() const
    {
        QStringList rows;
        for (int i = 0; i < form->modelSend.rowCount(); ++i) {
            const CTableViewModelItem_Send &row = form->modelSend.at(i);
            rows << QString("%1 %2 %3").arg(row.fileName, row.number).arg(row.trys);
        }
        return rows;
    }

    CEditorPage &page;
};
