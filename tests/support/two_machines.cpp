#include "tests/support/two_machines.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

namespace
{
void must(bool done, const char *what)
{
    if (done)
        return;
    std::perror(what);
    std::exit(1);
}

void run(const std::string &command)
{
    must(std::system(command.c_str()) == 0, command.c_str());
}

void write(const char *path, const std::string &text)
{
    must(bool(std::ofstream(path) << text << std::flush), path);
}

/// Who may not have networks of his own has them as the root of a user namespace.
void becomeRoot()
{
    const std::string user = std::to_string(::geteuid()), group = std::to_string(::getegid());
    if (user == "0")
        return;
    must(::unshare(CLONE_NEWUSER) == 0, "user namespace");
    write("/proc/self/setgroups", "deny");
    write("/proc/self/uid_map", "0 " + user + " 1");
    write("/proc/self/gid_map", "0 " + group + " 1");
}

int newMachine()
{
    must(::unshare(CLONE_NEWNET) == 0, "network namespace");
    const int machine = ::open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    must(machine >= 0, "/proc/thread-self/ns/net");
    run("ip link set lo up");
    return machine;
}

const std::string farUp = std::string("ip address add ") + TwoMachines::FarAddress + "/24 dev far";
} // namespace

TwoMachines::TwoMachines()
{
    becomeRoot();
    m_far = newMachine();
    m_near = newMachine();
    run("ip link add near type veth peer name far netns /proc/" + std::to_string(::getpid()) + "/fd/" +
        std::to_string(m_far));
    run(std::string("ip address add ") + NearAddress + "/24 dev near");
    run("ip link set near up");
    switchFarOn();
    plugCable();
}

TwoMachines::~TwoMachines()
{
    ::close(m_near);
    ::close(m_far);
}

void TwoMachines::standNear() const
{
    must(::setns(m_near, CLONE_NEWNET) == 0, "near machine");
}

void TwoMachines::standFar() const
{
    must(::setns(m_far, CLONE_NEWNET) == 0, "far machine");
}

void TwoMachines::pullCable() const
{
    standFar();
    run("ip link set far down");
    standNear();
}

void TwoMachines::plugCable() const
{
    run("ip neighbour flush dev near"); // and the packets that wait for an answer there
    standFar();
    run("ip link set far up");
    standNear();
}

void TwoMachines::switchFarOff() const
{
    standFar();
    run("ip address flush dev far");
    standNear();
}

void TwoMachines::switchFarOn() const
{
    standFar();
    run(farUp);
    standNear();
}
