#pragma once

#include "app/clock.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "text/telegram_form.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

/// A station whose window is open at the editor, with every form on offer and \a form in force; the keyboard
/// is in the text.
class FieldsRoom : public Station
{
public:
    explicit FieldsRoom(int form_ = FullForm, int processMode = SKK,
                        const std::function<void()> &prepare = {})
        : Station(processMode,
                  [&] {
                      for (EditorInterfaceMode &mode : Options.interfaceModes) {
                          mode.enabled = true;
                          mode.procedures = 7;
                      }
                      Options.editorInterfaceMode = form_;
                      if (prepare)
                          prepare();
                  }),
          page(*form->editorPage)
    {
        form->show();
        form->tabWidget->setCurrentWidget(form->editorPage);
        QVERIFY(QTest::qWaitForWindowActive(form.get(), PatienceMs));
        page.text->setFocus();
    }

    /// The keys of \a written, letters of any alphabet, go to what has the keyboard.
    static void type(const QString &written)
    {
        for (const QChar letter : written)
            for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
                const int key = letter == u'\n' ? int(Qt::Key_Return) : int(letter.toUpper().unicode());
                QKeyEvent event(kind, key, Qt::NoModifier, letter == u'\n' ? QStringLiteral("\r") : letter);
                QApplication::sendEvent(QApplication::focusWidget(), &event);
            }
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    /// The operator goes to \a field with the mouse, and writes.
    static void write(QWidget *field, const QString &written)
    {
        goTo(field);
        type(written);
    }
    static void goTo(QWidget *field)
    {
        auto *area = qobject_cast<QAbstractScrollArea *>(field);
        QTest::mouseClick(area ? area->viewport() : field, Qt::LeftButton);
        field->setFocus(Qt::MouseFocusReason); // where it was scrolled out
    }
    static void paste(const QString &copied)
    {
        QApplication::clipboard()->setText(copied);
        press(Qt::Key_V, Qt::ControlModifier);
    }
    /// A minute later.
    static void setTime(int hour, int minute)
    {
        Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(hour, minute)));
    }
    [[nodiscard]] QString text() const { return page.text->toPlainText(); }
    [[nodiscard]] QString dropped() const { return page.dropped->text(); }
    [[nodiscard]] QColor indexColour() const { return page.index->palette().color(QPalette::Base); }

    /// The entries of the menu that \a open brings up, those that cannot be chosen in brackets; \a chosen is
    /// then chosen by the keyboard.
    [[nodiscard]] QStringList menuEntries(const std::function<void()> &open, const QString &chosen = {}) const
    {
        QStringList entries;
        QTimer::singleShot(0, qApp, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (menu == nullptr)
                return;
            QAction *found = nullptr;
            for (QAction *action : menu->actions()) {
                const QString name = action->text();
                entries << (action->isEnabled() ? name : QStringLiteral("(%1)").arg(name));
                if (name == chosen)
                    found = action;
            }
            if (found == nullptr)
                return menu->close(), void();
            menu->setActiveAction(found);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        open();
        QApplication::setActiveWindow(form->window()); // as a window manager does behind a menu
        return entries;
    }
    [[nodiscard]] QStringList menuByKey(QWidget *field, const QString &chosen = {}) const
    {
        return menuEntries(
            [field] {
                QContextMenuEvent event(QContextMenuEvent::Keyboard, field->rect().center(),
                                        field->mapToGlobal(field->rect().center()));
                QApplication::sendEvent(field, &event);
            },
            chosen);
    }
    [[nodiscard]] QStringList menuByMouse(QWidget *field, const QString &chosen = {}) const
    {
        return menuEntries(
            [field] {
                auto *area = qobject_cast<QAbstractScrollArea *>(field);
                QWidget *under = area ? area->viewport() : field;
                QTest::mousePress(under, Qt::RightButton);
                QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                        under->mapToGlobal(QPoint(5, 5)));
                QApplication::sendEvent(under, &event);
            },
            chosen);
    }

    CEditorPage &page;
};
