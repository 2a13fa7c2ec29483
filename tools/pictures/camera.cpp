#include "tools/pictures/camera.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QPainter>
#include <QSemaphore>
#include <QSet>
#include <QThread>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int LookMs = 100;
constexpr int MostLooks = 900;
constexpr int FewestColours = 8; ///< an empty window has less

[[noreturn]] void fail(const QString &what)
{
    std::fprintf(stderr, "pictures: %s\n", qUtf8Printable(what));
    std::fflush(stderr);
    std::_Exit(1);
}

int colours(const QImage &image)
{
    QSet<QRgb> found;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found << image.pixel(x, y);
    return found.size();
}

QImage framed(const QPixmap &window)
{
    QImage image = window.toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::gray, 2));
    painter.drawRect(image.rect().adjusted(1, 1, -1, -1));
    return image;
}

QString journal()
{
    QString text;
    QDirIterator files(QStringLiteral("prt"), {QStringLiteral("*.prt")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            text += QString::fromUtf8(file.readAll());
    }
    return text;
}
} // namespace

void Camera::begin(const std::function<void()> &action)
{
    QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
}

void Camera::act(const std::function<void()> &action)
{
    QSemaphore done;
    begin([&] {
        action();
        done.release();
    });
    done.acquire();
}

void Camera::await(const char *what, const std::function<bool()> &isSo)
{
    for (int look = 0; look < MostLooks; ++look) {
        bool found = false;
        act([&] { found = isSo(); });
        if (found)
            return;
        QThread::msleep(LookMs);
    }
    fail(QStringLiteral("waited in vain for %1; the journal:\n").arg(QString::fromUtf8(what)) + journal());
}

void Camera::awaitJournal(const QString &words)
{
    await(qUtf8Printable(words), [&] { return journal().contains(words); });
}

QWidget *Camera::awaitDialog(const QString &title)
{
    QWidget *dialog = nullptr;
    await(qUtf8Printable(title), [&] {
        dialog = QApplication::activeModalWidget();
        return dialog != nullptr && dialog->isVisible() && dialog->windowTitle().startsWith(title);
    });
    return dialog;
}

void Camera::take(const QString &name, QWidget *window)
{
    QThread::msleep(LookMs); // what was set in motion is painted
    act([&] {
        const QImage image = framed(window->grab());
        if (colours(image) < FewestColours)
            fail(QStringLiteral("%1: nothing to be seen").arg(name));
        if (!image.save(qEnvironmentVariable("VELDA_PICTURES") + QLatin1Char('/') + name +
                        QStringLiteral(".png")))
            fail(QStringLiteral("%1: cannot be written").arg(name));
    });
    std::printf("%s\n", qPrintable(name));
    std::fflush(stdout);
}

void Camera::tellFarEnd(const QString &command)
{
    QFile file(qEnvironmentVariable("VELDA_FAR_END"));
    if (!file.open(QIODevice::WriteOnly) || file.write(command.toUtf8() + '\n') < 0)
        fail(QStringLiteral("the far end takes no command"));
}
