#include "models/AppState.h"
#include "platform/Pasteboard.h"
#include "platform/Scheduler.h"
#include "platform/TextSelections.h"
#include "support/Text.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr double feedbackSeconds = 1.5;

} // namespace

void AppState::deleteLastPhrase() {
    if (draftText().isEmpty()) {
        return;
    }
    static const std::array<QString, 3> separators = {u". "_s, u"! "_s, u"? "_s};
    QString candidate;
    for (const QString& separator : separators) {
        const qsizetype at = draftText().lastIndexOf(separator);
        if (at < 0) {
            continue;
        }
        const QString head = text::trimmedOfBlanks(draftText().left(at + 1));
        if (text::characterCount(head) > text::characterCount(candidate)) {
            candidate = head;
        }
    }
    m_draftText = candidate;
    showCompactFeedback(u"← removed"_s, feedbackSeconds);
}

void AppState::loadPreviousPhrase() {
    constexpr int rowsLookedAt = 5;
    if (!m_historyService) {
        return;
    }
    QList<HistoryEntry> rows;
    try {
        rows = m_historyService->recentEntries(rowsLookedAt);
    } catch (const HistoryError&) {
        return; // the draft stays
    }
    if (rows.isEmpty()) {
        return;
    }
    // It does not walk back through the history: repeated presses alternate between the two newest
    // different texts, on purpose.
    const QString draft = text::trimmedOfBlanks(draftText());
    const auto differs = [&draft](const HistoryEntry& row) {
        return text::trimmedOfBlanks(row.text) != draft;
    };
    const auto found = std::find_if(rows.cbegin(), rows.cend(), differs);
    m_draftText = (found == rows.cend() ? rows.first() : *found).text;
    showCompactFeedback(u"↑ loaded"_s, feedbackSeconds);
}

void AppState::attachImages(const QList<QUrl>& urls) {
    QList<QUrl> images = m_attachedImages.value();
    const qsizetype room = std::max<qsizetype>(maxAttachedImages - images.size(), 0);
    const QList<QUrl> taken = urls.first(std::min(room, urls.size()));
    if (taken.isEmpty()) {
        return;
    }
    images += taken;
    m_attachedImages = images;
    log(ActivityType::attach, u"%1 image(s) attached (%2/%3 total)"_s.arg(taken.size())
                                  .arg(images.size())
                                  .arg(maxAttachedImages));
}

void AppState::removeImage(const QUrl& url) {
    QList<QUrl> images = m_attachedImages.value();
    images.removeAll(url);
    m_attachedImages = images;
}

void AppState::clearImages() {
    m_attachedImages = QList<QUrl>();
}

void AppState::clearDraft() {
    m_draftText = QString();
    clearImages();
}

void AppState::copyToPasteboard(const QString& text) {
    m_platform.pasteboard.clearContents();
    m_platform.pasteboard.setString(text);
}

void AppState::pickUpSelection() {
    m_platform.scheduler.startDetached(
        [self = QPointer(this), &selections = m_platform.textSelections]() -> Task<> {
            std::optional<QString> text = co_await selections.selectedText();
            if (!text || text->isEmpty()) {
                text = co_await selections.pasteboardText();
            }
            if (self && text) {
                self->appendToDraft(text::trimmed(*text));
            }
        });
}

void AppState::appendToDraft(const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    const QString draft = draftText();
    const bool needsBlank = !draft.isEmpty() && !draft.back().isSpace();
    m_draftText = needsBlank ? draft + u' ' + text : draft + text;
}

} // namespace quorvin
