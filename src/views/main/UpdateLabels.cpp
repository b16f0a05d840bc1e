#include "views/main/UpdateLabels.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QString UpdateLabels::tooltip(bool updateAvailable, const QString& latestVersion,
                              const QString& version) {
    return updateAvailable ? tr("Update available: v%1 — click to download").arg(latestVersion)
                           : u"Quorvin v"_s + version;
}

QString UpdateLabels::subtitle(const UpdatePhase& phase) {
    if (const auto* const downloading = std::get_if<UpdatePhase::Downloading>(&phase.value)) {
        return tr("Downloading… %1").arg(percentage(downloading->fraction));
    }
    if (const auto* const failed = std::get_if<UpdatePhase::Failed>(&phase.value)) {
        return tr("Update failed: %1").arg(failed->message);
    }
    if (std::holds_alternative<UpdatePhase::Installing>(phase.value)) {
        return tr("Installing — the app will relaunch…");
    }
    return tr("Click Update to download & install automatically");
}

QString UpdateLabels::percentage(double fraction) {
    constexpr double whole = 100;
    return QString::number(static_cast<int>(std::clamp(fraction, 0.0, 1.0) * whole)) + u'%';
}

} // namespace quorvin
