#pragma once

#include "platform/SoundPlayer.h"

namespace quorvin {

class ApplicationBundle;
class UserDefaults;

/// Three short interface sounds. A sound whose file is missing has no player, and the program works
/// without it. Main thread only.
class SoundService {
public:
    SoundService(SoundPlayers& players, const ApplicationBundle& bundle,
                 const UserDefaults& defaults);
    ~SoundService();
    SoundService(const SoundService&) = delete;
    SoundService& operator=(const SoundService&) = delete;

    /// The living instance. Whoever composes the program makes one before anything asks for it.
    [[nodiscard]] static SoundService& shared();

    /// Plays one of the three from its start, unless sounds are off or there is no such sound.
    void play(SoundPlayer* player) const;

    /// Whether sounds are wanted: what the settings say, and true when they say nothing.
    bool isEnabled;

    // Empty when there is no such sound.
    const std::unique_ptr<SoundPlayer> uiSoundPlayer;
    const std::unique_ptr<SoundPlayer> popPlayer;
    const std::unique_ptr<SoundPlayer> vinylStopPlayer;

private:
    static inline SoundService* s_shared = nullptr;
};

} // namespace quorvin
