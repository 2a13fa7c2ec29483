#include "tests/ui/window/fields_room.h"

/// The forms of a telegram that the editor offers, and the rows of the one in force.
class TestEditorForms : public QObject
{
    Q_OBJECT

private slots:
    void offeredFormsAreThoseOfTheProcedure_data();
    void offeredFormsAreThoseOfTheProcedure();
    void storedFormThatIsNotOnOfferGivesWay_data();
    void storedFormThatIsNotOnOfferGivesWay();
    void chosenFormIsKeptByItsName();
    void chosenFormShowsItsRows_data();
    void chosenFormShowsItsRows();
    void formsFollowTheOptions();
    void hiddenRowsKeepWhatIsWrittenInThem();
};

namespace
{
const QString Names[] = {"Сообщение", "Телеграмма", "Телеграмма с оформлением", "Международная телеграмма",
                         "REX400"};

void enable(const QString &flags)
{
    for (int i = 0; i < flags.size(); ++i)
        Options.interfaceModes[i].enabled = flags.at(i) == u'1';
}

/// The numbers of the forms on offer, in the order of the list.
QString offered(const QComboBox &list)
{
    QString numbers;
    for (int i = 0; i < list.count(); ++i)
        for (int form = 0; form < TelegramFormCount; ++form)
            if (list.itemText(i) == Names[form])
                numbers += QString::number(form);
    return numbers;
}

QString shownRows(const CEditorPage &page)
{
    const QList<const QWidget *> fields{page.category, page.from, page.marks, page.address,
                                        page.fKassa,   page.fTo,  page.fFrom, page.pScript};
    QString rows;
    for (const QWidget *field : fields)
        rows += field->isVisible() ? u'+' : u'-';
    return rows;
}
} // namespace

void TestEditorForms::offeredFormsAreThoseOfTheProcedure_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("flags");
    QTest::addColumn<QString>("forms");
    row("centre, all", int(CKS), "11111", "123");
    row("switched, all", int(SKK), "11111", "01234");
    row("direct, all", int(Direct), "11111", "0");
    row("centre, as built in", int(CKS), "11100", "12");
    row("switched, as built in", int(SKK), "11100", "012");
    row("direct, as built in", int(Direct), "11100", "0");
    row("centre, international alone", int(CKS), "00010", "3");
    row("switched, REX400 alone", int(SKK), "00001", "4");
    row("direct, REX400 alone", int(Direct), "00001", "");
    row("none", int(SKK), "00000", "");
}

void TestEditorForms::offeredFormsAreThoseOfTheProcedure()
{
    QFETCH(int, procedure);
    QFETCH(QString, flags);
    const Station station(procedure, [flags] { enable(flags); });
    QTEST(offered(*station.form->editorPage->form), "forms");
}

void TestEditorForms::storedFormThatIsNotOnOfferGivesWay_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("flags");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("inForce");
    row("centre, on offer", int(CKS), "11100", 1, 1);
    row("centre, of another procedure", int(CKS), "11111", 0, 2);
    row("centre, not enabled", int(CKS), "11100", 3, 2);
    row("centre, no form", int(CKS), "11111", 5, 2);
    row("centre, the plain one is not enabled", int(CKS), "01000", 3, 2);
    row("switched, on offer", int(SKK), "11111", 4, 4);
    row("switched, not enabled", int(SKK), "11100", 4, 0);
    row("switched, negative", int(SKK), "11111", -1, 0);
    row("direct, on offer", int(Direct), "11100", 0, 0);
    row("direct, of another procedure", int(Direct), "11111", 2, 0);
}

void TestEditorForms::storedFormThatIsNotOnOfferGivesWay()
{
    QFETCH(int, procedure);
    QFETCH(QString, flags);
    QFETCH(int, stored);
    QFETCH(int, inForce);
    const Station station(procedure, [&] {
        enable(flags);
        Options.editorInterfaceMode = stored;
    });
    QCOMPARE(Options.editorInterfaceMode, inForce);
    const QComboBox &list = *station.form->editorPage->form;
    // One that is not there cannot be shown; no other is pretended.
    QCOMPARE(list.currentText(), list.findText(Names[inForce]) < 0 ? QString() : Names[inForce]);
}

void TestEditorForms::chosenFormIsKeptByItsName()
{
    const Station station(CKS, [] {
        enable("11110");
        Options.editorInterfaceMode = 1;
    });
    QComboBox &list = *station.form->editorPage->form;
    QCOMPARE(list.currentIndex(), 0); // the message is not for a centre
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(Options.editorInterfaceMode, 2);
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(Options.editorInterfaceMode, 3);
    QTest::keyClick(&list, Qt::Key_Home);
    QCOMPARE(Options.editorInterfaceMode, 1);
}

void TestEditorForms::chosenFormShowsItsRows_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("rows"); // category, heading, marks, address, cash desk, to, from, signature
    row("message", 0, "--------");
    row("telegram", 1, "+-------");
    row("telegram in full form", 2, "++++---+");
    row("international", 3, "+---++++");
    row("REX400", 4, "-+-----+");
}

void TestEditorForms::chosenFormShowsItsRows()
{
    QFETCH(int, form);
    for (int former = 0; former < TelegramFormCount; ++former) {
        const FieldsRoom room(former);
        room.page.form->setCurrentText(Names[form]);
        QTEST(shownRows(room.page), "rows");
        QVERIFY(room.page.text->isVisible());
    }
}

void TestEditorForms::formsFollowTheOptions()
{
    const Station station(SKK, [] { Options.editorInterfaceMode = 2; });
    enable("11011");
    station.form->checkEditorInterfaceMode();
    QCOMPARE(offered(*station.form->editorPage->form), "0134");
    QCOMPARE(Options.editorInterfaceMode, 0);
    enable("11111");
    station.form->checkEditorInterfaceMode();
    QCOMPARE(offered(*station.form->editorPage->form), "01234");
    QCOMPARE(station.form->editorPage->form->currentText(), Names[0]);
}

void TestEditorForms::hiddenRowsKeepWhatIsWrittenInThem()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.address, "МОСКВА");
    room.page.form->setCurrentText(Names[MessageForm]);
    room.page.form->setCurrentText(Names[FullForm]);
    QCOMPARE(room.page.address->text(), "МОСКВА");
}

QTEST_MAIN(TestEditorForms)
#include "test_editor_forms.moc"
