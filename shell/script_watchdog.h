#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class QJSEngine;

namespace veldran::shell {

/// Interrupts the script that an engine is running once it has had its time. Time that the user takes to
/// answer a question of the script does not count.
class ScriptWatchdog {
public:
    ScriptWatchdog(QJSEngine& engine, std::chrono::milliseconds limit);
    /// Leaves the engine ready to run again.
    ~ScriptWatchdog();
    ScriptWatchdog(const ScriptWatchdog&) = delete;
    ScriptWatchdog& operator=(const ScriptWatchdog&) = delete;

    void pause();
    void resume();
    bool hasInterrupted() const;

private:
    using Clock = std::chrono::steady_clock;
    void watch();

    QJSEngine& engine_;
    std::chrono::milliseconds limit_;
    mutable std::mutex mutex_; ///< guards everything below, and the engine's life as the thread sees it
    std::condition_variable changed_;
    Clock::time_point deadline_;
    Clock::time_point pausedAt_;
    bool paused_ = false;
    bool done_ = false;
    bool interrupted_ = false;
    std::thread thread_; ///< the script runs on the caller's thread, so only another one can stop it
};

} // namespace veldran::shell
