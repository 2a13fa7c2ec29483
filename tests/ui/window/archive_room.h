#pragma once

#include "app/clock.h"
#include "records/file_attr.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/search_page.h"
#include "ui/widgets/telegram_view.h"
#include "ui/window/search_run.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

Q_DECLARE_METATYPE(CArchivePage::Kind)

/// A station whose window is open at one of the tabs of telegrams: incoming, outgoing or searched. The files
/// of a kind stand in "inp" or "out"; a search looks at both.
class ArchiveRoom : public Station
{
public:
    explicit ArchiveRoom(CArchivePage::Kind tab, int processMode = CKS,
                         const std::function<void()> &prepare = {})
        : Station(processMode, prepare), page(*pageOf(tab)), kind(tab)
    {
        form->show();
        form->tabWidget->setCurrentWidget(
            tab == CArchivePage::Found ? static_cast<QWidget *>(form->searchPage) : pageOf(tab));
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }

    /// Makes the file \a name of \a day.
    void put(const QString &name, const QByteArray &text,
             const QString &day = QStringLiteral("20260731")) const
    {
        desk.write(place(name, day), text);
    }
    [[nodiscard]] QString place(const QString &name, const QString &day = QStringLiteral("20260731")) const
    {
        return (kind == CArchivePage::Sent ? QStringLiteral("out/") : QStringLiteral("inp/")) + day +
               QLatin1Char('/') + name;
    }
    [[nodiscard]] QString pathOf(const QString &name) const { return desk.path(place(name)); }
    /// Puts the files of one list there and has the window find them.
    void putAndShow(const QStringList &names) const
    {
        for (const QString &name : names)
            put(name, "ТЕКСТ " + name.toUtf8());
        refresh();
    }
    /// What the tick's scan does for a tab of a day, and the button for the search.
    void refresh() const
    {
        if (kind == CArchivePage::Found)
            form->searchSearch();
        else
            form->scanDir();
        awaitSearch();
    }
    /// On a busy machine a search is not over with the first slice of its time.
    void awaitSearch() const { QTRY_VERIFY(form->searchRun->outcome() != CSearchRun::Running); }
    [[nodiscard]] QStringList rows() const
    {
        const QAbstractItemModel &model = *page.table->model();
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names << model.index(row, 0).data(Qt::UserRole).toString();
        return names;
    }
    /// The name of the selected file; empty if there is none.
    [[nodiscard]] QString selected() const { return rows().value(page.table->selectedRow()); }
    [[nodiscard]] QString text() const { return page.text->toPlainText(); }
    [[nodiscard]] bool isYellow(int row) const
    {
        return page.table->model()->index(row, 0).data(Qt::BackgroundRole).value<QBrush>().color() ==
               Qt::yellow;
    }
    void click(int row) const
    {
        const QModelIndex index = page.table->model()->index(row, 0);
        page.table->scrollTo(index);
        QTest::mouseClick(page.table->viewport(), Qt::LeftButton, {}, page.table->visualRect(index).center());
    }
    void click(const QString &name) const { click(rows().indexOf(name)); }
    static void click(QWidget *button) { QTest::mouseClick(button, Qt::LeftButton); }
    /// A key, where the keyboard is.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    CArchivePage &page;

private:
    [[nodiscard]] CArchivePage *pageOf(CArchivePage::Kind tab) const
    {
        return tab == CArchivePage::Received ? form->inputPage
               : tab == CArchivePage::Sent   ? form->outputPage
                                             : form->searchPage->found;
    }

    const CArchivePage::Kind kind;
};

inline void everyTab()
{
    QTest::addColumn<CArchivePage::Kind>("kind");
    row("incoming", CArchivePage::Received);
    row("outgoing", CArchivePage::Sent);
    row("search", CArchivePage::Found);
}

inline void everyDayTab()
{
    QTest::addColumn<CArchivePage::Kind>("kind");
    row("incoming", CArchivePage::Received);
    row("outgoing", CArchivePage::Sent);
}

/// Lets \a work deal with the dialog that opens next.
inline void inNextDialog(const std::function<void(QDialog &dialog)> &work)
{
    QTimer::singleShot(0, [work] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        work(*dialog);
        dialog->close();
    });
}
