#include "app/startup.h"

int main(int argc, char *argv[])
{
    return endProcess(runVelda(argc, argv));
}
