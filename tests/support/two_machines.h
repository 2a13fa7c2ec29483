#pragma once

/// Two machines joined by a cable: network namespaces of this process. A socket opened or a program started
/// while the calling thread stands in one of them belongs to that machine, and so does a thread started
/// there. To be made before the process has a second thread; ends the process if the system refuses it.
class TwoMachines
{
public:
    static constexpr const char *NearAddress = "10.11.12.1";
    static constexpr const char *FarAddress = "10.11.12.2";

    TwoMachines(); ///< stands at the near machine
    ~TwoMachines();
    TwoMachines(const TwoMachines &) = delete;
    TwoMachines &operator=(const TwoMachines &) = delete;

    void standNear() const;
    void standFar() const;

    // What befalls the network; the caller stands at the near machine afterwards.

    void pullCable() const; ///< both ends see it
    void plugCable() const;
    /// The far machine answers nothing any more, and nothing tells the near one.
    void switchFarOff() const;
    void switchFarOn() const; ///< with all its connections, as if it had only been out of reach

private:
    int m_far = -1; // descriptors of the namespaces
    int m_near = -1;
};
