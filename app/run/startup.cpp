#include "app/startup.h"

#include "app/ask.h"
#include "app/clock.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "app/run/leftovers.h"
#include "app/run/orderly_end.h"
#include "app/run/russian.h"
#include "app/run/user_data.h"
#include "app/run/version.h"
#include "app/state.h"
#include "records/protocol.h"
#include "ui/form_main.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStyleFactory>

#include <clocale>

namespace
{
constexpr int RefusedStart = 1;

/// argv[0] as it is found after the change of the current directory; a bare name is left to the search path.
QString programOf(const char *firstArgument)
{
    const QString program = QString::fromLocal8Bit(firstArgument);
    const bool bareName = QFileInfo(program).fileName() == program;
    return bareName ? program : QFileInfo(program).absoluteFilePath();
}

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Velda"));
    QCoreApplication::setApplicationVersion(programVersion());
    QCoreApplication::setOrganizationDomain(QStringLiteral("velda.local"));
}

struct DataPlace {
    QString directory;
    QString shared; ///< of the installation that makes and furnishes this directory; empty for any other
};

/// An installed program may not write beside itself: without a directory in the arguments it takes the
/// user's.
DataPlace dataPlace(const QStringList &arguments)
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString shared = sharedDirectory(program);
    const QString usual = shared.isEmpty() ? program : userDataDirectory();
    const QString directory = dataDirectory(arguments, usual);
    return {directory, directory == usual ? shared : QString()};
}

/// False if the directory cannot be entered, also because it could not be made.
bool enterDataPlace(const DataPlace &place)
{
    if (!place.shared.isEmpty())
        QDir().mkpath(place.directory);
    return enterDataDirectory(place.directory);
}

/// The stores, the clock and the window come up in this order; each relies on those before it. \a shared is
/// what an installation has for the data directory, empty if nothing is to be put there.
int startAndRun(const QString &shared)
{
    installOrderlyEnd(); // a request that comes during the start waits for the event loop
    Time.start();
    State.Load();
    correctFontSize();
    Log.Load();
    nameApplication();
    Log.addCacheServiceString(startLine(), ProtocolInfo, false);
    if (!shared.isEmpty())
        furnishDataDirectory(shared); // the window looks whether there is a manual
    mainWindow = new FormMain;
    mainWindow->show();
    return QApplication::exec();
}
} // namespace

QString dataDirectory(const QStringList &arguments, const QString &fallback)
{
    QString directory = fallback;
    for (const QString &argument : arguments) {
        if (argument == QLatin1String("-dc"))
            directory = QDir::currentPath();
        else if (argument.startsWith(QLatin1String("-d=")))
            directory = argument.mid(3);
    }
    if (directory.isEmpty())
        return QDir::currentPath();
    return QDir::isAbsolutePath(directory) ? directory : QDir::current().absoluteFilePath(directory);
}

bool enterDataDirectory(const QString &directory)
{
    Options.appPath = directory;
    if (!directory.endsWith(QLatin1Char('/')) && !directory.endsWith(QDir::separator()))
        Options.appPath += QDir::separator();
    return QDir::setCurrent(Options.appPath);
}

QString processModeWord(int processMode)
{
    switch (processMode) {
    case CKS: return JournalWords::CentreWord;
    case SKK: return JournalWords::SwitchedWord;
    default: return JournalWords::DirectWord;
    }
}

QString buildDate()
{
    return QString::fromLatin1(__DATE__).simplified(); // the compiler pads a day of one digit
}

QString startLine()
{
    return JournalWords::Started + processModeWord(Options.processMode) + JournalWords::StartedRest +
           QCoreApplication::applicationVersion() + QStringLiteral(" B:") + buildDate();
}

void correctFontSize()
{
    QFont font = QApplication::font();
    State.basePointSize = font.pointSize();
    if (Options.fontSizeCorrect == 0)
        return;
    font.setPointSize(State.basePointSize + Options.fontSizeCorrect);
    QApplication::setFont(font);
}

int runVelda(int argc, char *argv[])
{
    std::setlocale(LC_ALL, "ru_RU.utf-8");
    qInstallMessageHandler(Velda_MessageOutput);
    QApplication::setAttribute(Qt::AA_DisableWindowContextHelpButton); // nothing answers its "?"
    QApplication application(argc, argv);
    speakRussian();
    const QString program = programOf(argv[0]);
    const DataPlace place = dataPlace(application.arguments().mid(1));
    if (!enterDataPlace(place)) {
        warn(lockRefusal(QLockFile::PermissionError)); // telegrams must not land in some other directory
        return RefusedStart;
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("windows")));
    Options.Load();
    Log.lineWidthLimit = Options.limitProtocolStringWidth ? Options.protocolStringWidth : 0;
    QLockFile lock(lockFileName);
    if (!takeInstanceLock(lock))
        return RefusedStart;
    if (lock.isLocked())
        sweepLeftovers();
    const int status = startAndRun(place.shared);
    shutDown(program);
    return status;
}
