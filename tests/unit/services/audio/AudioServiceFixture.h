#pragma once

#include "services/audio/AudioService.h"
#include "support/LogCapture.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeAudioHost.h"

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

/// A service on a machine whose microphone delivers 16 kHz mono, which needs no conversion.
class AudioServiceFixture : public ::testing::Test {
protected:
    static LogCapture::Line info(const QString& text) { return {QtInfoMsg, text}; }
    static LogCapture::Line error(const QString& text) { return {QtCriticalMsg, text}; }

    /// The engine made last, of those alive.
    FakeCaptureEngine& engine() { return *host.engines.back(); }

    /// Feeds one buffer and lets the main thread see it.
    void hear(const std::vector<float>& samples) {
        engine().feed(samples);
        scheduler.runPosted();
    }

    FakeAudioHost host;
    VirtualScheduler scheduler;
    LogCapture log{"com.quorvin.AudioService"};
    std::unique_ptr<AudioService> service = std::make_unique<AudioService>(host, scheduler);
};

} // namespace quorvin::testing
