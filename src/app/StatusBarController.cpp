#include "app/StatusBarController.h"

#include "app/AppDelegate.h"
#include "theme/SymbolImage.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr int imageSide = 64; // pixels; trays scale it down

/// Legible on dark and on light trays, which can't be told apart.
const QColor imageColor(0xa6, 0xab, 0xb5);

} // namespace

QString statusSymbol(bool isRecording, bool isTranscribing) {
    if (isRecording) {
        return u"mic.fill"_s;
    }
    return isTranscribing ? u"waveform"_s : u"mic"_s;
}

void StatusBarController::setup(AppDelegate& appDelegate, std::function<void()> terminate) {
    m_statusItem.setMenu({
        {.title = u"Show Quorvin"_s,
         .keyEquivalent = {},
         .action = [&appDelegate] { appDelegate.showMainWindow(); }},
        {.title = u"Settings…"_s,
         .keyEquivalent = u"Meta+,"_s,
         .action = [&appDelegate] { appDelegate.openSettings(); }},
        {.title = u"Compact Mode"_s,
         .keyEquivalent = u"Ctrl+`"_s,
         .action = [&appDelegate] { appDelegate.toggleCompactMode(); }},
        {.title = u"Quit Quorvin"_s, .keyEquivalent = u"Meta+Q"_s, .action = std::move(terminate)},
    });
    updateIcon(false, false);
}

void StatusBarController::updateIcon(bool isRecording, bool isTranscribing) {
    const QImage image =
        symbolImage(statusSymbol(isRecording, isTranscribing), imageSide, imageColor);
    if (!image.isNull()) {
        m_statusItem.setImage(image, u"Quorvin"_s);
    }
}

} // namespace quorvin
