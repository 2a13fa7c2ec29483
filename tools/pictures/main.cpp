// The workstation with an operator inside who shows it to the manual's reader: scripts/manual/pictures.sh
// starts it beside a far end.
//   VELDA_SCENE     what is shown: centre, switched, direct, nerva, adapter
//   VELDA_PICTURES  folder that the pictures go to
//   VELDA_FAR_END   where the far end takes its commands

#include "app/startup.h"
#include "tools/pictures/camera.h"
#include "tools/pictures/scenes.h"
#include "ui/form_main.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <cstdlib>

namespace
{
struct Scene {
    const char *name;
    void (*play)();
};
const Scene scenes[] = {{"centre", centreScene},
                        {"switched", switchedScene},
                        {"direct", directScene},
                        {"nerva", nervaScene},
                        {"adapter", adapterScene}};

/// Ends the process at once: nobody wants what the scene has left behind.
void playScene()
{
    Camera::await("the window", [] { return mainWindow != nullptr && mainWindow->isVisible(); });
    for (const Scene &scene : scenes)
        if (qEnvironmentVariable("VELDA_SCENE") == QLatin1String(scene.name)) {
            scene.play();
            std::_Exit(0);
        }
    std::fprintf(stderr, "pictures: no such scene\n");
    std::_Exit(2);
}

void engage()
{
    QThread::create(playScene)->start();
}
Q_COREAPP_STARTUP_FUNCTION(engage)
} // namespace

int main(int argc, char *argv[])
{
    return endProcess(runVelda(argc, argv));
}
