#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>

class TestProtocolWidget : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }

    void startsOnTodayWithTheKeyboard()
    {
        Roll roll;
        QCOMPARE(roll.view->focusPolicy(), Qt::WheelFocus);
        QCOMPARE(roll.view->date(), QDate(2026, 7, 31));
        QVERIFY(roll.view->isLastString());
    }

    void todayIsShownWithoutACopy()
    {
        Roll roll;
        QVERIFY(&roll.view->shownLines() == &Log.lines.list());
    }

    void linesOnScreenComeFromTheHeight()
    {
        Roll roll;
        roll.show();
        const int spacing = QFontMetrics(roll.view->font()).lineSpacing();
        QCOMPARE(roll.view->linesOnScreen(), (roll.view->textArea().height() + 1) / spacing - 1);
        roll.view->resize(900, 10);
        QCoreApplication::processEvents();
        QCOMPARE(roll.view->linesOnScreen(), 1);
    }

    void followsTheEndWhenLinesCome()
    {
        Roll roll;
        roll.show();
        Roll::addLines(500);
        QVERIFY(roll.view->isLastString());
        QCOMPARE(roll.bar()->maximum(), 501 - roll.view->linesOnScreen());
        QCOMPARE(roll.top(), roll.bar()->maximum());
        Roll::addLines(10);
        QCOMPARE(roll.top(), 512 - roll.view->linesOnScreen());
    }

    void scrolledBackIsLeftAlone()
    {
        Roll roll;
        roll.show();
        Roll::addLines(500);
        roll.view->move(-7);
        const int top = roll.top();
        Roll::addLines(50);
        QCOMPARE(roll.top(), top);
        QVERIFY(!roll.view->isLastString());
        QCOMPARE(roll.bar()->maximum(), 552 - roll.view->linesOnScreen());
    }

    void resizingKeepsTheEnd()
    {
        Roll roll;
        roll.show();
        Roll::addLines(500);
        roll.view->resize(900, 250);
        QCoreApplication::processEvents();
        QVERIFY(roll.view->isLastString());
        roll.view->resize(900, 600);
        QCoreApplication::processEvents();
        QVERIFY(roll.view->isLastString());
        QCOMPARE(roll.top(), 501 - roll.view->linesOnScreen());
    }

    void openingTheSearchRowKeepsTheEnd()
    {
        Roll roll;
        roll.show();
        Roll::addLines(500);
        auto *row = roll.view->findChild<QWidget *>("protocolSearchRow");
        auto *button = roll.view->findChild<QPushButton *>("protocolMore");
        QVERIFY(!row->isVisible());
        QCOMPARE(button->text(), QString(QChar(0x2193)));
        QVERIFY(button->isFlat());
        QCOMPARE(button->width(), button->fontMetrics().horizontalAdvance("00"));
        const int before = roll.view->linesOnScreen();
        QTest::mousePress(button, Qt::LeftButton);
        QTRY_VERIFY(row->isVisible());
        QTRY_VERIFY(roll.view->linesOnScreen() < before);
        QCOMPARE(button->text(), QString(QChar(0x2191)));
        QVERIFY(roll.view->isLastString());
        QTest::mouseRelease(button, Qt::LeftButton);
        QTest::mousePress(button, Qt::LeftButton);
        QTRY_VERIFY(!row->isVisible());
        QCOMPARE(button->text(), QString(QChar(0x2193)));
        QTRY_COMPARE(roll.view->linesOnScreen(), before);
        QVERIFY(roll.view->isLastString());
    }

    void panelHoldsDateAndSwitches_data()
    {
        QTest::addColumn<int>("processMode");
        QTest::addColumn<int>("national");
        QTest::addColumn<QStringList>("labels");
        ::row("CKS", 0, 0, QStringList{"Регистры", "Информация", "Разделить"});
        ::row("SKK", 1, 0, QStringList{"Регистры", "Информация", "Команды", "Разделить"});
        ::row("direct", 2, 0, QStringList{"Регистры", "Информация", "Разделить"});
        ::row("Tatar", 0, 1, QStringList{"Регистры", "Информация", "Разделить", "Язык"});
        ::row("Georgian", 0, 2, QStringList{"Регистры", "Информация", "Разделить"});
    }
    void panelHoldsDateAndSwitches()
    {
        QFETCH(int, processMode);
        QFETCH(int, national);
        QFETCH(QStringList, labels);
        Desk desk;
        Options.nationalLanguageUse = national;
        Options.processMode = processMode;
        CProtocolWidget view(&Log);
        QStringList found;
        for (const QCheckBox *box : view.findChildren<QCheckBox *>())
            if (!box->isHidden())
                found << box->text();
        QCOMPARE(found, labels);
        QCOMPARE(view.findChild<QDateEdit *>()->displayFormat(), QString("dd.MM.yyyy"));
        const auto *search = view.findChild<QLineEdit *>("protocolSearch");
        QCOMPARE(search->placeholderText(), QString("Найти"));
        QCOMPARE(search->maxLength(), 20);
        const auto *panel = view.findChild<QWidget *>("protocolPanel");
        QCOMPARE(panel->palette().color(QPalette::Window), QColor(96, 96, 160));
        QVERIFY(panel->autoFillBackground());
    }

    void switchesFollowTheSetters()
    {
        Roll roll(1);
        QVERIFY(roll.view->showInfo());
        roll.view->setShowInfo(false);
        roll.view->setShowRegisters(true);
        roll.view->setShowCmd(true);
        QVERIFY(!roll.view->showInfo());
        QVERIFY(roll.view->showRegisters());
        QVERIFY(roll.view->showCmd());
        QVERIFY(!roll.box("protocolInfo")->isChecked());
        roll.box("protocolRegisters")->setChecked(false);
        QVERIFY(!roll.view->showRegisters());
    }

    void commandsCannotBeShownOutsideOfTheSwitchedNetwork()
    {
        Roll roll(0);
        roll.view->setShowCmd(true);
        QVERIFY(!roll.view->showCmd());
    }

    void languageSwitchComesAndGoesWithTheOption()
    {
        Roll roll;
        QVERIFY(roll.box("protocolNational")->isHidden());
        Options.nationalLanguageUse = 1;
        roll.view->slotProtocolOptionsChanged();
        QVERIFY(!roll.box("protocolNational")->isHidden());
    }

    void fontAndItsGrowthChangeTheRows()
    {
        Roll roll;
        roll.show();
        Roll::addLines(500);
        const int before = roll.view->linesOnScreen();
        Options.protocolFont.setPointSize(24);
        roll.view->initFont();
        QVERIFY(roll.view->linesOnScreen() < before);
        QVERIFY(roll.view->isLastString());
        QFont larger = roll.view->font();
        larger.setPointSize(48);
        const int middle = roll.view->linesOnScreen();
        roll.view->setFont(larger);
        QVERIFY(roll.view->linesOnScreen() < middle);
        QVERIFY(roll.view->isLastString());
    }

    void panelKeepsTheFontOfTheWindow()
    {
        Roll roll;
        Options.protocolFont.setPointSize(40);
        Options.protocolFont.setBold(true);
        roll.view->initFont();
        const QFont panel = roll.view->findChild<QDateEdit *>()->font();
        QCOMPARE(panel.pointSize(), QApplication::font().pointSize());
        QCOMPARE(panel.bold(), QApplication::font().bold());
        QCOMPARE(panel.family(), QApplication::font().family());
    }

    void panelIsNotCutOffInALargeFont_data()
    {
        QTest::addColumn<int>("points");
        ::row("8", 8);
        ::row("16", 16);
        ::row("24", 24);
    }
    void panelIsNotCutOffInALargeFont()
    {
        QFETCH(int, points);
        QFont font = m_font;
        font.setPointSize(points);
        Roll roll(1);
        roll.show();
        QApplication::setFont(font);
        roll.view->findChild<QWidget *>("protocolSearchRow")->show();
        QCoreApplication::processEvents();
        for (const QCheckBox *box : roll.view->findChildren<QCheckBox *>())
            if (!box->isHidden())
                QVERIFY2(box->width() >= box->sizeHint().width(), qPrintable(box->text()));
        const auto *search = roll.view->findChild<QLineEdit *>("protocolSearch");
        QVERIFY(search->height() >= search->sizeHint().height());
        const QRect panel = roll.view->findChild<QWidget *>("protocolPanel")->rect();
        QVERIFY(panel.contains(search->parentWidget()->geometry()));
    }

    void keysAreReported()
    {
        Roll roll;
        int key = 0;
        connect(roll.view.get(), &CProtocolWidget::KeyPressed, [&](QKeyEvent *event) { key = event->key(); });
        QTest::keyClick(roll.view.get(), Qt::Key_Q);
        QCOMPARE(key, int(Qt::Key_Q));
    }

private:
    const QFont m_font = QApplication::font();
};

QTEST_MAIN(TestProtocolWidget)
#include "test_protocol_widget.moc"
