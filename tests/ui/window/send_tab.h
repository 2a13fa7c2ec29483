#pragma once

#include "records/send_model.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/send_page.h"
#include "ui/widgets/file_table.h"
#include "ui/widgets/telegram_view.h"

#include <QAction>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTabWidget>
#include <QtTest>

/// A station with its window on the screen and the tab "Передача" in front, worked by mouse and keys.
class SendTab : public Station
{
public:
    explicit SendTab(int processMode, const std::function<void()> &prepare = {})
        : Station(processMode, prepare), page(form->sendPage), waiting(page->tableSend),
          failed(page->tableSendBad)
    {
        form->tabWidget->setCurrentWidget(page);
        form->show();
        form->activateWindow();
        QCoreApplication::processEvents();
        (void)news();
    }

    /// A file of the outgoing directory.
    void queue(const QString &name, const QByteArray &text = "ТЕКСТ") const
    {
        desk.write(QStringLiteral("out/") + name, text);
    }
    /// The same, with its record: "number|C|31.07.2026 12:00|u|tries|N|words".
    void queueWithRecord(const QString &name, const QString &record, const QByteArray &text = "ТЕКСТ") const
    {
        queue(name, text);
        desk.write(QStringLiteral("out/") + name + QStringLiteral(".dat"), record.toUtf8());
    }
    [[nodiscard]] QString record(const QString &name) const
    {
        return QString::fromUtf8(desk.read(QStringLiteral("out/") + name + QStringLiteral(".dat")));
    }
    [[nodiscard]] bool isQueued(const QString &name) const
    {
        return QFile::exists(desk.path(QStringLiteral("out/") + name));
    }
    void remove(const QString &name) const
    {
        QVERIFY(QFile::remove(desk.path(QStringLiteral("out/") + name)));
    }

    [[nodiscard]] static QStringList names(const CFileTable *table)
    {
        QStringList found;
        for (int row = 0; row < table->model()->rowCount(); ++row)
            found << table->model()->index(row, 0).data().toString();
        return found;
    }
    /// The name of the selected file of \a table; empty if there is none.
    [[nodiscard]] static QString selected(const CFileTable *table)
    {
        return names(table).value(table->selectedRow());
    }
    /// Clicks on the row of \a name, in whichever list it is.
    void click(const QString &name, Qt::MouseButton button = Qt::LeftButton) const
    {
        CFileTable *table = tableOf(name);
        QTest::mouseClick(table->viewport(), button, Qt::NoModifier, placeOf(name));
    }
    /// Opens the context menu on the row of \a name.
    [[nodiscard]] QMenu *openMenu(const QString &name) const
    {
        click(name, Qt::RightButton);
        QWidget *viewport = tableOf(name)->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, placeOf(name),
                                viewport->mapToGlobal(placeOf(name)));
        QApplication::sendEvent(viewport, &event);
        return menu();
    }
    /// The context menu that is up, or null.
    [[nodiscard]] QMenu *menu() const
    {
        for (QMenu *menu : page->findChildren<QMenu *>())
            if (menu->isVisible())
                return menu;
        return nullptr;
    }
    static void choose(QMenu *menu, const QAction *action)
    {
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                          menu->actionGeometry(const_cast<QAction *>(action)).center());
    }
    [[nodiscard]] QString text() const { return page->text->toPlainText(); }

    CSendPage *page;
    CFileTable *waiting, *failed;

private:
    [[nodiscard]] CFileTable *tableOf(const QString &name) const
    {
        return names(waiting).contains(name) ? waiting : failed;
    }
    [[nodiscard]] QPoint placeOf(const QString &name) const
    {
        const CFileTable *table = tableOf(name);
        return table->visualRect(table->model()->index(names(table).indexOf(name), 0)).center();
    }
};
