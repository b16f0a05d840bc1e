#include "models/CompactWindowController.h"

#include "models/AppState.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr auto restingTime = std::chrono::milliseconds(250);
constexpr double defaultDistance = 48.0; // from the bottom of the screen

bool isImage(const QUrl& url) {
    static const std::array extensions{u"png"_s,  u"jpg"_s,  u"jpeg"_s, u"gif"_s,
                                       u"webp"_s, u"heic"_s, u"tiff"_s, u"bmp"_s};
    const QFileInfo file(url.path());
    if (file.completeBaseName().isEmpty()) {
        return false; // a hidden file's name is no extension
    }
    const QString extension = file.suffix().toLower();
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

} // namespace

CompactDrop CompactDrop::split(const QList<QUrl>& urls) {
    CompactDrop drop;
    for (const QUrl& url : urls) {
        (isImage(url) ? drop.images : drop.files).append(url);
    }
    return drop;
}

CompactWindowController::CompactWindowController(WindowSystem& windowSystem,
                                                 UserDefaults& userDefaults, Scheduler& scheduler,
                                                 const QString& keyPosX, const QString& keyPosY)
    : m_windowSystem(windowSystem)
    , m_userDefaults(userDefaults)
    , m_scheduler(scheduler)
    , m_keyPosX(keyPosX)
    , m_keyPosY(keyPosY) {}

CompactWindowController::~CompactWindowController() = default;

void CompactWindowController::show(AppState& appState) {
    m_appState = &appState;
    if (!m_panel && m_makePanel) {
        m_panel = m_makePanel(appState);
        m_placedOrigin = storedOrigin().value_or(defaultOrigin());
        m_isProgrammaticMove = true;
        m_panel->setOrigin(m_placedOrigin);
        m_panel->onMoved = [this] { moved(); };
        m_panel->onDropped = [this](const QList<QUrl>& urls) { dropped(urls); };
    }
    if (m_panel) {
        m_panel->orderFront();
    }
}

void CompactWindowController::close() {
    m_storing.cancel();
    if (m_panel) {
        storeOrigin();
        m_panel.reset();
    }
    m_appState.clear();
}

QPointF CompactWindowController::defaultOrigin() const {
    const auto screens = m_windowSystem.screens();
    if (screens.empty()) {
        return {};
    }
    const QRectF visible = screens.front().visibleFrame;
    return {visible.center().x() - compactW / 2,
            visible.bottom() - defaultDistance - compactTotalH};
}

void CompactWindowController::moved() {
    // Window managers tell of a window's placing like of any other move.
    m_isProgrammaticMove = m_isProgrammaticMove && m_panel->origin() == m_placedOrigin;
    if (m_isProgrammaticMove) {
        return;
    }
    // Once the panel rests: a drag makes sixty moves a second, and each store waits for the disk.
    m_storing = m_scheduler.startAfter(restingTime, [this] { storeOrigin(); });
}

std::optional<QPointF> CompactWindowController::storedOrigin() const {
    const auto x = m_userDefaults.number(m_keyPosX);
    const auto y = m_userDefaults.number(m_keyPosY);
    if (!x || !y || !isOnScreen(*x, *y)) {
        return std::nullopt;
    }
    return QPointF(*x, *y);
}

bool CompactWindowController::isOnScreen(double x, double y) const {
    // Only the centre counts: the panel may hang over an edge.
    const QPointF center(x + compactW / 2, y + compactTotalH / 2);
    const auto screens = m_windowSystem.screens();
    return std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        const QRectF& frame = screen.frame; // its right and lower edges belong to the neighbours
        return center.x() >= frame.left() && center.x() < frame.right() &&
               center.y() >= frame.top() && center.y() < frame.bottom();
    });
}

void CompactWindowController::storeOrigin() {
    const QPointF origin = m_panel->origin();
    m_userDefaults.setDouble(m_keyPosX, origin.x());
    m_userDefaults.setDouble(m_keyPosY, origin.y());
}

void CompactWindowController::dropped(const QList<QUrl>& urls) {
    m_scheduler.post([appState = m_appState, drop = CompactDrop::split(urls)] {
        if (!appState) {
            return;
        }
        if (!drop.images.isEmpty()) {
            appState->attachImages(drop.images);
        }
        if (!drop.files.isEmpty()) {
            QStringList paths; // as they are, without quotes
            for (const QUrl& url : drop.files) {
                paths.append(url.toLocalFile());
            }
            const QString text = paths.join(u' ');
            const QString draft = appState->draftText();
            appState->setDraftText(draft.isEmpty() ? text : draft + u' ' + text);
        }
    });
}

} // namespace quorvin
