#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/pages/protocol_page.h"
#include "ui/pages/send_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/file_table.h"
#include "ui/window/status_strip.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

namespace
{
constexpr int Smallest = 6, Usual = 9, Largest = 24; ///< points

/// The window with everything on it that there can be, in letters of the usual size.
class Zoomed : public Station
{
public:
    explicit Zoomed(int processMode)
        : Station(processMode, [] {
              QFont font = QApplication::font();
              font.setPointSize(Usual);
              QApplication::setFont(font);
              Options.protocolFont.setPointSize(12);
              Options.saveWindowPos = false;
              Options.usePrf = Options.useOperators = true;
              Options.nationalLanguageUse = 1;
              Options.listOperators = QStringList{QStringLiteral("ИВАНОВ")};
              Options.editorInterfaceMode = 3;
          })
    {
        State.setAutomatic(false);
        desk.write(QStringLiteral("out/20260731u001"), "A\r\n");
        form->scanDir();
        find<QWidget>("protocolSearchRow")->show();
        PrfThread.stateText = QStringLiteral("Перфоратор");
        form->slotOnPrfState();
        form->show();
        setUsual();
    }
    ~Zoomed() { PrfThread.stateText.clear(); }
    /// Presses the keys of the zoom until the window has that size.
    void zoomTo(int points) const
    {
        for (int now = QApplication::font().pointSize(); now != points;) {
            const Qt::Key key = now < points ? Qt::Key_Plus : Qt::Key_Minus;
            QTest::keyClick(form.get(), key, Qt::ControlModifier | Qt::KeypadModifier);
            const int next = QApplication::font().pointSize();
            QVERIFY(next != now);
            now = next;
        }
        settle();
    }
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }
    /// Everything of the window that shows text, but for the roll and the telegrams, which have a font of
    /// their own.
    [[nodiscard]] QList<QWidget *> texts() const
    {
        QList<QWidget *> found;
        for (QWidget *widget : form->findChildren<QWidget *>())
            if (qobject_cast<QLabel *>(widget) || qobject_cast<QAbstractButton *>(widget) ||
                qobject_cast<QLineEdit *>(widget) || qobject_cast<QAbstractSpinBox *>(widget) ||
                qobject_cast<QComboBox *>(widget) || qobject_cast<QMenuBar *>(widget) ||
                qobject_cast<QTabBar *>(widget) || qobject_cast<QAbstractItemView *>(widget))
                found << widget;
        return found;
    }

private:
    void setUsual() const
    {
        settle();
        zoomTo(Usual);
    }
};

QString nameOf(const QWidget *widget)
{
    return QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName() +
           QStringLiteral(" in ") + widget->parentWidget()->objectName();
}

void everyProcedure()
{
    QTest::addColumn<int>("procedure");
    row("CKS", int(CKS));
    row("SKK", int(SKK));
    row("direct", int(Direct));
}
} // namespace

/// The zoom: everything of the window follows it, and the window stays inside its screen.
class TestFormMainZoom : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }

    void everyTextFollowsBothWays_data() { everyProcedure(); }
    void everyTextFollowsBothWays()
    {
        QFETCH(int, procedure);
        Zoomed station(procedure);
        for (const int points : {Largest, Usual, Smallest, 14, Smallest, Usual}) {
            station.zoomTo(points);
            for (const QWidget *widget : station.texts())
                QVERIFY2(widget->font().pointSize() == points, qPrintable(nameOf(widget)));
            QCOMPARE(station.form->protocolWidget->font().pointSize(), 12 + points - Usual);
            for (const QPlainTextEdit *text : station.form->findChildren<QPlainTextEdit *>())
                QVERIFY2(text->font().pointSize() == 12 + points - Usual, qPrintable(nameOf(text)));
        }
    }

    void everyTextFollowsTheOption()
    {
        Zoomed station(SKK);
        for (const int correction : {4, -2}) {
            Options.fontSizeCorrect = correction;
            State.basePointSize = Usual;
            station.form->updateTitles();
            Zoomed::settle();
            for (const QWidget *widget : station.texts())
                QVERIFY2(widget->font().pointSize() == Usual + correction, qPrintable(nameOf(widget)));
        }
    }

    void noTextIsCutOff_data() { everyProcedure(); }
    void noTextIsCutOff()
    {
        QFETCH(int, procedure);
        Zoomed station(procedure);
        for (const bool manual : {true, false}) {
            State.setAutomatic(!manual);
            for (const int points : {Usual, 14, Largest, Smallest}) {
                station.zoomTo(points);
                for (int tab = 0; tab < station.form->tabWidget->count(); ++tab) {
                    station.form->tabWidget->setCurrentIndex(tab);
                    Zoomed::settle();
                    expectNothingCut(station, points);
                }
            }
        }
    }

    void leastWidthFitsSmallScreens_data() { everyProcedure(); }
    void leastWidthFitsSmallScreens()
    {
        QFETCH(int, procedure);
        Zoomed station(procedure);
        State.CKS_in = State.CKS_out = State.SKK_in = State.SKK_out = State.PK_in = State.PK_out = 888;
        station.form->resize(800, 600);
        for (const bool manual : {true, false}) {
            State.setAutomatic(!manual);
            station.tick();
            for (int points = Smallest; points <= Largest; ++points) {
                station.zoomTo(points);
                QVERIFY2(station.form->minimumSizeHint().width() <= 800, qPrintable(QString::number(points)));
                QCOMPARE(station.form->width(), 800);
            }
        }
        station.zoomTo(Largest);
        station.form->resize(1366, 768);
        QCOMPARE(station.form->width(), 1366);
    }

    void windowIsNotWiderThanAskedAtTheStart()
    {
        QFont font = QApplication::font();
        font.setPointSize(Usual);
        QApplication::setFont(font);
        for (const int correction : {4, 15}) {
            Station station(SKK, [correction] {
                State.basePointSize = Usual;
                Options.fontSizeCorrect = correction;
                Options.geometryMainForm = QRect(0, 0, 800, 560);
            });
            State.setAutomatic(false);
            station.form->show();
            Zoomed::settle();
            QCOMPARE(station.form->width(), 800);
        }
    }

    void thirdBoxGoesBelowWhereItHasNoRoom()
    {
        Zoomed station(Direct);
        const auto &boxes = station.form->strip->boxes;
        station.form->resize(800, 600);
        station.zoomTo(Usual);
        const int width = CUtils::txtGUIWidth(24, station.form->font());
        QCOMPARE(boxes[2]->geometry().top(), boxes[0]->geometry().top());
        QCOMPARE(boxes[2]->geometry(), QRect(2 * width + 4, 0, 800 - 2 * width - 4, boxes[0]->height()));
        station.zoomTo(Largest);
        QCOMPARE(boxes[0]->geometry().top(), boxes[1]->geometry().top());
        QCOMPARE(boxes[2]->geometry().top(), boxes[0]->geometry().bottom() + 3);
        QCOMPARE(boxes[2]->width(), 800);
        QCOMPARE(boxes[1]->geometry().right(), 799);
        QCOMPARE(station.form->strip->height(), boxes[2]->geometry().bottom() + 1);
        const int withPerforator = boxes[2]->height();
        Options.usePrf = false;
        station.form->setPrfInterface();
        Zoomed::settle();
        QVERIFY(boxes[2]->height() < withPerforator);
        // On a wide screen the three stand side by side again, each of the first two with its width.
        const int large = CUtils::txtGUIWidth(24, station.form->font());
        station.form->resize(3 * large + 10, 700);
        Zoomed::settle();
        QCOMPARE(boxes[2]->geometry().top(), boxes[0]->geometry().top());
        QCOMPARE(boxes[0]->width(), large);
        QCOMPARE(boxes[1]->width(), large);
        QCOMPARE(station.form->strip->height(), boxes[0]->height());
    }

    void buttonsWrapInNarrowWindows()
    {
        Zoomed station(SKK);
        station.form->resize(800, 600);
        station.zoomTo(Largest);
        const auto &buttons = station.form->protocolPage->modeButtons;
        QCOMPARE(buttons.first()->pos(), QPoint(1, 1));
        QVERIFY(buttons.last()->y() > buttons.first()->y());
        for (int i = 1; i < buttons.size(); ++i) // in reading order, none upon another
            QVERIFY(buttons[i]->y() > buttons[i - 1]->y() ||
                    buttons[i]->x() >= buttons[i - 1]->geometry().right());
        station.zoomTo(Usual);
        QCOMPARE(buttons.last()->y(), buttons.first()->y());
    }

    void dateFieldsAreAsWideAsTheirText_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<int>("tab");
        row("roll", QByteArray("protocolDate"), 0);
        row("incoming", QByteArray("dateInput"), 2);
        row("outgoing", QByteArray("dateOutput"), 3);
    }
    void dateFieldsAreAsWideAsTheirText()
    {
        QFETCH(QByteArray, field);
        QFETCH(int, tab);
        Zoomed station(CKS);
        station.form->tabWidget->setCurrentIndex(tab);
        auto *date = station.find<QDateEdit>(field.constData());
        QVERIFY(date->calendarPopup());
        for (const int points : {Smallest, Usual, Largest, Usual}) {
            station.zoomTo(points);
            const int text = date->fontMetrics().horizontalAdvance(QStringLiteral("30.12.2026"));
            const int room = date->findChild<QLineEdit *>()->width();
            QVERIFY2(room >= text, qPrintable(QString::number(points)));
            QVERIFY2(room <= text + 2 * date->fontMetrics().height() + 8,
                     qPrintable(QString::number(points)));
            QCOMPARE(date->width(), date->sizeHint().width());
        }
    }

    void calendarChoosesTheDayOfTheRoll()
    {
        Zoomed station(CKS);
        station.desk.write(QStringLiteral("prt/20260715.prt"), "\1ВЧЕРА<>");
        auto *date = station.find<QDateEdit>("protocolDate");
        date->calendarWidget()->setSelectedDate(QDate(2026, 7, 15));
        emit date->calendarWidget()->activated(QDate(2026, 7, 15));
        date->setDate(date->calendarWidget()->selectedDate());
        QCOMPARE(station.form->protocolWidget->date(), QDate(2026, 7, 15));
        QCOMPARE(station.form->protocolWidget->shownLines().size(), 1);
    }

    void rowsOfTheQueueFollow()
    {
        Zoomed station(SKK);
        station.form->tabWidget->setCurrentIndex(1);
        QTableView *table = station.form->sendPage->tableSend;
        const int usual = table->columnWidth(0);
        table->setColumnWidth(1, 150); // drawn by the operator
        for (const int points : {Largest, Smallest, Usual}) {
            station.zoomTo(points);
            QVERIFY(table->rowHeight(0) >= table->fontMetrics().height());
        }
        QCOMPARE(table->columnWidth(0), usual);
        QVERIFY(qAbs(table->columnWidth(1) - 150) < 8);
    }

private:
    static void expectNothingCut(const Zoomed &station, int points)
    {
        for (const QWidget *widget : station.texts()) {
            if (!widget->isVisible() || qobject_cast<const QAbstractItemView *>(widget) ||
                qobject_cast<const QTabBar *>(widget) ||
                qobject_cast<const QTabBar *>(widget->parentWidget()))
                continue;
            const auto *label = qobject_cast<const QLabel *>(widget);
            if (label && label->wordWrap() && label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
                continue; // shows what it can; the rest is in its tool tip
            const QSize least = widget->minimumSizeHint();
            const int height =
                label && label->wordWrap() ? label->heightForWidth(label->width()) : least.height();
            const QString what = QString::number(points) + ' ' + nameOf(widget);
            if (widget->objectName() != QLatin1String("protocolMore")) // as narrow as two figures
                QVERIFY2(widget->width() >= least.width(), qPrintable(what));
            if (!qobject_cast<const QAbstractSpinBox *>(widget->parentWidget())) // which has the frame
                QVERIFY2(widget->height() >= height, qPrintable(what));
            const QRect inWindow(widget->mapTo(station.form.get(), QPoint()), widget->size());
            QVERIFY2(inWindow.right() < station.form->width(), qPrintable(what));
        }
    }

    const QFont m_font = QApplication::font();
};

QTEST_MAIN(TestFormMainZoom)
#include "test_form_main_zoom.moc"
