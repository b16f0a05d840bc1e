#include "views/settings/UpdateStatus.h"

#include "theme/HexColor.h"
#include "views/main/UpdateLabels.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QString UpdateStatus::text(const UpdatePhase& phase, bool updateAvailable,
                           const QString& latestVersion) {
    if (const auto* const failed = std::get_if<UpdatePhase::Failed>(&phase.value)) {
        return u"Failed: "_s + failed->message;
    }
    if (const auto* const downloading = std::get_if<UpdatePhase::Downloading>(&phase.value)) {
        return u"Downloading… "_s + UpdateLabels::percentage(downloading->fraction);
    }
    if (std::holds_alternative<UpdatePhase::Installing>(phase.value)) {
        return u"Installing…"_s;
    }
    return updateAvailable ? latestVersion + u" available"_s : u"Up to date"_s;
}

bool UpdateStatus::isUpToDate(const UpdatePhase& phase, bool updateAvailable) {
    return std::holds_alternative<UpdatePhase::Idle>(phase.value) && !updateAvailable;
}

QString UpdateStatus::version(const QString& version, bool updateAvailable,
                              const QString& latestVersion) {
    const QString own = u'v' + version;
    return updateAvailable ? own + u" → v"_s + latestVersion : own;
}

QList<ReleaseNote> UpdateStatus::releaseNotes() {
    return {
        {u"textformat"_s, hexColor(u"00e5ff"), u"Geist typeface across the whole app"_s},
        {u"sparkles"_s, hexColor(u"3b82f6"),
         u"Premium Send-to chips (gradient + glass) and neon status dot"_s},
        {u"arrow.down.app.fill"_s, hexColor(u"f59e0b"),
         u"One-click in-app update — banner + Update Now downloads, installs & relaunches"_s},
        {u"sparkles"_s, hexColor(u"00e5ff"),
         u"Neon-at-night compact equalizer — vivid color end-to-end + glowing foreground"_s},
        {u"info.circle.fill"_s, hexColor(u"22c55e"),
         u"In-app updater now works with a private repo (reads a public release manifest)"_s},
        {u"bolt.fill"_s, hexColor(u"3b82f6"),
         u"Compact panel idle CPU cut from ~40% → low single digits (adaptive 10fps idle)"_s},
        {u"textformat"_s, hexColor(u"3b82f6"),
         u"Mic label & timer moved out of Canvas — no more per-frame text re-rendering"_s},
        {u"gauge.with.dots.needle.bottom.50percent"_s, hexColor(u"ef4444"),
         u"Idle waveform no longer updates the hidden 96-bar array (pure waste removed)"_s},
        {u"cpu.fill"_s, hexColor(u"10b981"),
         u"Ring animation CPU reduced 30% → 0.1% idle (removed blur layers)"_s},
        {u"memorychip.fill"_s, hexColor(u"f59e0b"),
         u"Agents section — session monitoring, orchestrator config"_s},
        {u"lock.shield.fill"_s, hexColor(u"00e5ff"),
         u"All settings persist across restarts (language, device, gain…)"_s},
    };
}

} // namespace quorvin
