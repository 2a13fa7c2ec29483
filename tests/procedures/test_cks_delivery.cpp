// What surrounds a telegram of the numbered exchange that is sent: its print and its new-mark.

#include "app/options.h"
#include "records/file_attr.h"
#include "records/send_model.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestCksDelivery : public QObject
{
    Q_OBJECT

private slots:
    void deliveredFileIsMarked_data();
    void deliveredFileIsMarked();
    void sentTelegramIsPrinted_data();
    void sentTelegramIsPrinted();
};

void TestCksDelivery::deliveredFileIsMarked_data()
{
    QTest::addColumn<bool>("markInp");
    QTest::addColumn<bool>("markOut");
    row("neither", false, false);
    row("received ones alone", true, false);
    row("sent ones alone", false, true);
}

void TestCksDelivery::deliveredFileIsMarked()
{
    QFETCH(bool, markInp);
    QFETCH(bool, markOut);
    const CksDesk desk;
    Options.markNewFilesInInp = markInp;
    Options.markNewFilesInOut = markOut;
    desk.inTransit();
    State.tlgMode = 3;
    State.PK_out = 1;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 ПОСЛЕДНИЕ "));
    QCOMPARE(desk.names("out/20260731"), QStringList("20260731u001.001"));
    QCOMPARE(CFileAttr("out/20260731/20260731u001.001").checkNew(), markOut);
}

void TestCksDelivery::sentTelegramIsPrinted_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("printed");
    row("none", 0, false);
    row("received", 1, false);
    row("sent", 2, true);
    row("both", 3, true);
}

void TestCksDelivery::sentTelegramIsPrinted()
{
    QFETCH(int, mode);
    QFETCH(bool, printed);
    const CksDesk desk;
    Options.PrinterType = 1;
    Options.PrinterRaw = desk.path("printed");
    Options.PrinterCodePage = 2;
    Options.PrinterRawLFCount = 0;
    Options.autoPrintMode = mode;
    desk.write("out/20260731u001", "ТЕКСТ");
    CTableViewModelItem_Send item;
    item.fileName = QStringLiteral("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(desk.noted().contains("312:00:00 Печать файла"), printed);
    QCOMPARE(desk.readPrinted().contains("ЗЦЗЦ 001 ТЕКСТ НННН"), printed);
}

QTEST_MAIN(TestCksDelivery)
#include "test_cks_delivery.moc"
