#ifndef ZEPHYR_SANDBOX_SIMULATION_SIMULATIONCLOCK_H
#define ZEPHYR_SANDBOX_SIMULATION_SIMULATIONCLOCK_H

namespace zephyr::sandbox {

/// Turns the wall-clock time of frames into whole simulation steps of kStepSeconds.
///
/// - It is: the pause, the speed and the part of a step that is left over. It is not: a timer; callers say how
///   much time passed.
/// - Threads: used by one thread at a time.
/// - A frame counts as a tenth of a second at most, so that a slow machine runs slower instead of falling further
///   behind with every frame.
class SimulationClock
{
public:
    /// Number of steps that are due after `wallSeconds` more of wall-clock time. None while paused.
    unsigned stepsFor(double wallSeconds);

    bool isPaused() const { return mPaused; }
    void setPaused(bool paused) { mPaused = paused; }

    /// Simulated seconds per second of wall-clock time. 1 at the start.
    double speed() const { return mSpeed; }
    void setSpeed(double speed) { mSpeed = speed; }

private:
    bool mPaused = false;
    double mSpeed = 1.0;
    double mLeftOver = 0.0; // simulated seconds
};

} // namespace zephyr::sandbox

#endif
