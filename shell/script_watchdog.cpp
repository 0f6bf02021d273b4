#include "shell/script_watchdog.h"

#include <QJSEngine>

namespace veldran::shell {

ScriptWatchdog::ScriptWatchdog(QJSEngine& engine, std::chrono::milliseconds limit)
    : engine_(engine), limit_(limit), deadline_(Clock::now() + limit_), thread_([this] { watch(); }) {}

ScriptWatchdog::~ScriptWatchdog() {
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    changed_.notify_one();
    thread_.join();
    engine_.setInterrupted(false);
}

void ScriptWatchdog::pause() {
    const std::lock_guard lock(mutex_);
    paused_ = true;
    pausedAt_ = Clock::now();
    changed_.notify_one();
}

void ScriptWatchdog::resume() {
    const std::lock_guard lock(mutex_);
    paused_ = false;
    deadline_ += Clock::now() - pausedAt_;
    changed_.notify_one();
}

bool ScriptWatchdog::hasInterrupted() const {
    const std::lock_guard lock(mutex_);
    return interrupted_;
}

void ScriptWatchdog::watch() {
    std::unique_lock lock(mutex_);
    while (!done_) {
        if (paused_) {
            changed_.wait(lock);
        } else if (Clock::now() < deadline_) {
            changed_.wait_until(lock, deadline_);
        } else {
            interrupted_ = true;
            engine_.setInterrupted(true);
            return;
        }
    }
}

} // namespace veldran::shell
