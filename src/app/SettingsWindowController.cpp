#include "app/SettingsWindowController.h"

#include "models/AppState.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"
#include "platform/WindowSystem.h"

#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr auto restingTime = std::chrono::milliseconds(250);
constexpr double minimumWidth = 780;
constexpr double minimumHeight = 560;
const QString widthKey = u"settingsWindowW"_s;
const QString heightKey = u"settingsWindowH"_s;

} // namespace

QSizeF settingsWindowSize(std::optional<double> storedWidth, std::optional<double> storedHeight,
                          std::optional<double> visibleHeight) {
    if (storedWidth.value_or(0) >= minimumWidth && storedHeight.value_or(0) >= minimumHeight) {
        return {*storedWidth, *storedHeight};
    }
    if (!visibleHeight) {
        return {960, 680};
    }
    const double height = std::min(*visibleHeight * 0.8, 900.0);
    return {std::max(height * 1.45, 900.0), std::max(height, 640.0)};
}

SettingsWindowController::SettingsWindowController(QQmlEngine& engine, WindowSystem& windowSystem,
                                                   UserDefaults& userDefaults, Scheduler& scheduler)
    : m_engine(engine)
    , m_windowSystem(windowSystem)
    , m_userDefaults(userDefaults)
    , m_scheduler(scheduler) {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::open(AppState& appState) {
    if (!m_window || !m_window->isVisible()) {
        makeWindow(appState);
    }
    if (m_window) {
        bringToFront();
    }
}

void SettingsWindowController::makeWindow(AppState& appState) {
    QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Quorvin/SettingsWindow.qml"_s));
    m_window.reset(qobject_cast<QQuickWindow*>(
        component.createWithInitialProperties({{u"appState"_s, QVariant::fromValue(&appState)}})));
    if (!m_window) {
        qCritical("The settings can't be shown: %ls", qUtf16Printable(component.errorString()));
        return;
    }
    const auto screens = m_windowSystem.screens();
    const auto visible =
        screens.empty() ? std::nullopt : std::optional(screens.front().visibleFrame);
    const QSizeF size =
        settingsWindowSize(m_userDefaults.number(widthKey), m_userDefaults.number(heightKey),
                           visible ? std::optional(visible->height()) : std::nullopt);
    m_window->setMinimumSize(QSizeF(minimumWidth, minimumHeight).toSize());
    m_window->resize(size.toSize());
    if (visible) {
        m_window->setPosition(
            (visible->center() - QPointF(size.width(), size.height()) / 2).toPoint());
    }
    // Once the size rests: each store waits for the disk.
    const auto resized = [this] {
        m_storing = m_scheduler.startAfter(restingTime, [this] { storeSize(); });
    };
    QObject::connect(m_window.get(), &QWindow::widthChanged, m_window.get(), resized);
    QObject::connect(m_window.get(), &QWindow::heightChanged, m_window.get(), resized);
}

void SettingsWindowController::storeSize() {
    if (m_window) {
        // The frame's size is stored and set as the content's next time: it may grow a little.
        const QSize frame = m_window->frameGeometry().size();
        m_userDefaults.setDouble(widthKey, frame.width());
        m_userDefaults.setDouble(heightKey, frame.height());
    }
}

void SettingsWindowController::bringToFront() {
    m_window->show();
    m_window->raise();
    m_window->requestActivate(); // and with it the program
}

} // namespace quorvin
