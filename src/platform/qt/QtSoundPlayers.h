#pragma once

#include "platform/SoundPlayer.h"

namespace quorvin {

class SoundThread;

/// Short sounds, decoded when a player is made and played through Qt's audio output.
///
/// The output lives on a thread of its own, which starts with the first sound: a sound server that
/// doesn't answer holds up nobody else. Without a server, sounds are silent. A sound whose rate is
/// not 1 changes its pitch with it. Volume and rate apply from the next start on.
///
/// Qt's media player is not used: without an output device, or without all parts of its back end,
/// version 6.4 takes the process down.
class QtSoundPlayers final : public SoundPlayers {
public:
    QtSoundPlayers();
    ~QtSoundPlayers() override;

    [[nodiscard]] std::unique_ptr<SoundPlayer> make(const QString& path) override;

private:
    std::shared_ptr<SoundThread> m_thread;
};

} // namespace quorvin
