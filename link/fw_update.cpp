#include "link/fw_update.h"

#include "link/adapter_protocol.h"
#include "records/protocol.h"
#include "text/utils.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QProgressDialog>
#include <QSerialPort>

namespace
{
constexpr int LoaderBaud = 115200;
constexpr int ResetMs = 1000; // of DTR low
constexpr int StartMs = 200;  // from there until the loader listens
constexpr int SyncPauseMs = 100;
constexpr int BlockPauseMs = 10;
constexpr int FinishMs = 1000;
constexpr int AdapterBaud = 9600;
constexpr int AdapterStartMs = 3000; // opening the port resets an adapter
constexpr int WriteMs = 100;

/// Lets time pass while the window lives on.
void pause(int ms)
{
    const QDeadlineTimer deadline(ms);
    do {
        QCoreApplication::processEvents();
        const qint64 left = qBound<qint64>(0, deadline.remainingTime(), BlockPauseMs);
        QThread::msleep(static_cast<unsigned long>(left));
    } while (!deadline.hasExpired());
    QCoreApplication::processEvents();
}

/// Goes to the journal at once: no running line ends while the link is paused.
void note(const QString &text, ProtocolTypes type = ProtocolInfo)
{
    Log.addCacheServiceString(text, type, false);
}

/// The window that shows how far the loading is, and by which the operator can end it.
class Progress : public QProgressDialog
{
public:
    explicit Progress(int size)
        : QProgressDialog(QString(), QStringLiteral("Отменить"), 0, size, QApplication::activeWindow())
    {
        setWindowTitle(QStringLiteral("Update"));
        setModal(true);
        setAutoClose(false);
        setAutoReset(false);
        setMinimumDuration(0);
        setValue(1);
        show();
    }
};

/// One image on its way into one device.
class Loading
{
public:
    Loading(const QString &portName, const FIRMWARE_DATA &record, const unsigned char *data)
        : m_record(record), m_data(data), m_progress(int(record.size))
    {
        m_port.setPortName(portName);
        m_port.setBaudRate(LoaderBaud);
    }
    [[nodiscard]] bool run();

private:
    void reset();
    [[nodiscard]] bool begin();
    [[nodiscard]] bool loadBlocks();
    [[nodiscard]] bool loadBlock(quint32 offset);
    [[nodiscard]] bool finish();

    const FIRMWARE_DATA &m_record;
    const unsigned char *m_data;
    Progress m_progress;
    QSerialPort m_port;
};

bool failed(const QString &text)
{
    note(text);
    return false;
}

bool Loading::run()
{
    const bool done = m_port.open(QIODevice::ReadWrite) && begin() && loadBlocks() && finish();
    if (m_port.isOpen())
        m_port.close();
    if (!done) {
        note(QStringLiteral("Error update firmware"), ProtocolError);
        return false;
    }
    pause(FinishMs);
    note(QStringLiteral("Программирование завершено"));
    return true;
}

/// Starts the device anew, and so its boot loader. A port without DTR refuses it, which stops nothing: a
/// board behind it is started by hand.
void Loading::reset()
{
    m_port.setDataTerminalReady(false);
    pause(ResetMs);
    m_port.setDataTerminalReady(true);
    pause(StartMs);
}

bool Loading::begin()
{
    reset();
    for (int pass = 0; pass < 2; ++pass) {
        BootLoader::sendSync(m_port);
        pause(SyncPauseMs);
        m_port.readAll(); // a late answer must not be taken for that of a later command
    }
    if (!BootLoader::getSync(m_port))
        return failed(QStringLiteral("Программатор не обнаружен"));
    note(QStringLiteral("Подготовка к записи firmware ver: %1 size: %2")
             .arg(m_record.version)
             .arg(m_record.size));
    if (!BootLoader::enterProgramming(m_port))
        return failed(QStringLiteral("Сбой при переходе в режим программирования"));
    return true;
}

bool Loading::loadBlocks()
{
    for (quint32 offset = 0; offset < m_record.size; offset += m_record.blockSize) {
        m_progress.setValue(int(offset));
        if (!loadBlock(offset))
            return false;
        if (m_progress.wasCanceled())
            return failed(QStringLiteral("Прервано пользователем"));
        pause(BlockPauseMs);
    }
    return true;
}

bool Loading::loadBlock(quint32 offset)
{
    const quint32 address = m_record.startAddress + offset;
    const QString shown = QString::number(address, 16);
    if (!BootLoader::loadAddress(m_port, address))
        return failed(QStringLiteral("Ошибка передачи адреса для записи блока данных ") + shown);
    const quint32 count = qMin(m_record.blockSize, m_record.size - offset);
    if (!BootLoader::programPage(m_port, m_data + offset, count))
        return failed(QStringLiteral("Ошибка передачи блока данных ") + shown);
    return true;
}

bool Loading::finish()
{
    if (!BootLoader::leaveProgramming(m_port))
        return failed(QStringLiteral("Нет ответа об успешном завершении"));
    m_progress.setValue(int(m_record.size));
    reset();
    return true;
}

/// Sends one lock command and drops what has come meanwhile.
bool sendLock(QSerialPort &port)
{
    const bool sent = port.putChar(AdapterProtocol::Lock) && port.waitForBytesWritten(WriteMs);
    port.readAll();
    return sent;
}
} // namespace

bool CFWUpdateThread::update(const QString &serial)
{
    struct Device {
        QChar begins;
        const FIRMWARE_DATA *record;
        const unsigned char *data;
    };
    static const Device devices[] = {
        {u'1', &FW_TRELO, FW_TRELO_DATA},
        {u'2', &FW_SOREL, FW_SOREL_DATA},
        {u'3', &FW_TRELOE, FW_TRELOE_DATA},
    };
    for (const Device &device : devices)
        if (serial.startsWith(device.begins)) {
            const QString portName = CUtils::getPortNameBySN(serial);
            return !portName.isEmpty() && update(portName, device.record, device.data);
        }
    return false;
}

bool CFWUpdateThread::update(const QString &portName, const FIRMWARE_DATA *record, const unsigned char *data)
{
    if (carriesImage(data))
        return Loading(portName, *record, data).run();
    note(QStringLiteral("Эта сборка программы не содержит firmware для устройства"), ProtocolError);
    return false;
}

bool CFWUpdateThread::testUpdate(const QString &portName)
{
    return update(portName, &FW_BLINK, FW_BLINK_DATA);
}

bool CFWUpdateThread::lock(const QString &serial)
{
    const QString portName = CUtils::getPortNameBySN(serial);
    QSerialPort port(portName);
    port.setBaudRate(AdapterBaud);
    if (portName.isEmpty() || !port.open(QIODevice::ReadWrite))
        return false;
    pause(AdapterStartMs);
    const bool sent =
        sendLock(port) && sendLock(port); // the second is the one that counts if noise met the first
    port.close();
    if (sent)
        note(QStringLiteral("Send lock cmd for ") + serial);
    return sent;
}
