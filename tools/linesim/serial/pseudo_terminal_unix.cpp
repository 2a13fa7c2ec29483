#include "tools/linesim/serial/pseudo_terminal.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr int WatchMs = 10; // the system tells of an opened port only to who asks

/// A raw other end, so that nothing is echoed or changed before the program sets it up; and one close, which
/// makes the master tell of a port that nobody has open.
bool prepareOtherEnd(const QByteArray &device)
{
    const int slave = ::open(device.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave < 0)
        return false;
    termios settings = {};
    const bool done = ::tcgetattr(slave, &settings) == 0;
    ::cfmakeraw(&settings);
    const bool raw = done && ::tcsetattr(slave, TCSANOW, &settings) == 0;
    ::close(slave);
    return raw;
}

/// Only the other end can drop what it has not read.
void forgetUnread(const QByteArray &device)
{
    const int slave = ::open(device.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave < 0)
        return;
    ::tcflush(slave, TCIOFLUSH);
    ::close(slave);
}

struct Speed {
    speed_t code;
    int baud;
};

const Speed speeds[] = {
    {B50, 50},         {B75, 75},         {B110, 110},       {B150, 150},     {B200, 200},
    {B300, 300},       {B600, 600},       {B1200, 1200},     {B2400, 2400},   {B4800, 4800},
    {B9600, 9600},     {B19200, 19200},   {B38400, 38400},   {B57600, 57600}, {B115200, 115200},
    {B230400, 230400}, {B460800, 460800}, {B921600, 921600},
};

int openMaster(QByteArray &device)
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[64] = {};
    if (master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0 &&
        ::ptsname_r(master, name, sizeof name) == 0) {
        device = name;
        if (prepareOtherEnd(device))
            return master;
    }
    if (master >= 0)
        ::close(master);
    return -1;
}
} // namespace

PseudoTerminal::PseudoTerminal(const QString &link) : m_link(link)
{
    m_watch.setInterval(WatchMs);
    connect(&m_watch, &QTimer::timeout, this, &PseudoTerminal::watchForOpening);
}

PseudoTerminal::~PseudoTerminal()
{
    unplug();
}

bool PseudoTerminal::plug()
{
    unplug();
    QByteArray device;
    m_master = openMaster(device);
    if (m_master < 0)
        return false;
    m_device = QString::fromLatin1(device);
    if (!m_link.isEmpty()) {
        if (QFileInfo(m_link).isSymLink()) // left by a device that was killed
            QFile::remove(m_link);
        if (!QFile::link(m_device, m_link)) {
            ::close(m_master);
            m_master = -1;
            return false;
        }
    }
    m_watch.start();
    return true;
}

void PseudoTerminal::unplug()
{
    if (!isPlugged())
        return;
    m_watch.stop();
    m_notifier.reset();
    if (!m_link.isEmpty())
        QFile::remove(m_link);
    ::close(m_master);
    m_master = -1;
    m_open = false;
}

QString PseudoTerminal::portName() const
{
    if (!isPlugged())
        return QString();
    return m_link.isEmpty() ? m_device : m_link;
}

int PseudoTerminal::speed() const
{
    termios settings = {};
    if (::tcgetattr(m_master, &settings) != 0)
        return 0;
    for (const Speed &known : speeds)
        if (known.code == ::cfgetospeed(&settings))
            return known.baud;
    return 0;
}

void PseudoTerminal::write(const QByteArray &bytes)
{
    if (!m_open)
        return;
    for (qint64 done = 0; done < bytes.size();) {
        const ssize_t taken = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (taken < 0 && errno == EINTR)
            continue;
        if (taken <= 0)
            return;
        done += taken;
    }
}

void PseudoTerminal::watchForOpening()
{
    pollfd watched = {m_master, POLLIN, 0};
    if (::poll(&watched, 1, 0) < 0 || (watched.revents & POLLHUP && !(watched.revents & POLLIN)))
        return;
    m_watch.stop();
    m_open = true;
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PseudoTerminal::readMaster);
    emit opened();
}

void PseudoTerminal::readMaster()
{
    char bytes[4096];
    const ssize_t count = ::read(m_master, bytes, sizeof bytes);
    if (count > 0)
        emit received(QByteArray(bytes, int(count)));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        close();
}

void PseudoTerminal::close()
{
    m_notifier.release()->deleteLater(); // it is the caller
    forgetUnread(m_device.toLatin1());   // the next program to open the port finds nothing old
    m_open = false;
    m_watch.start();
    emit closed();
}
