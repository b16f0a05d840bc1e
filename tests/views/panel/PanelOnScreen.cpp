#include "views/panel/PanelOnScreen.h"

#include "views/compact/QuickCompactPanel.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QScreen>

#include <algorithm>
#include <array>

#include <xcb/xtest.h>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

namespace {

/// Returns when the server has done all that it was asked for on this connection, and everything
/// that it had to tell is here.
void synchronize(xcb_connection_t* connection) {
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

FocusWatch::FocusWatch(XDesktop& desktop, xcb_window_t window)
    : m_handle(xcb_connect(qgetenv("DISPLAY").constData(), nullptr))
    , m_activeWindow(desktop.atom("_NET_ACTIVE_WINDOW")) {
    const std::uint32_t focus = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(m_handle, window, XCB_CW_EVENT_MASK, &focus);
    const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_handle, desktop.root(), XCB_CW_EVENT_MASK, &properties);
    synchronize(m_handle);
}

FocusWatch::~FocusWatch() {
    xcb_disconnect(m_handle);
}

int FocusWatch::losses() {
    synchronize(m_handle);
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_handle)}) {
        const int type = event->response_type & ~0x80;
        if (type == XCB_FOCUS_OUT) {
            const auto mode = reinterpret_cast<const xcb_focus_out_event_t&>(*event).mode;
            // A grab of the pointer or the keyboard, as of a drag, is no loss.
            m_losses += mode == XCB_NOTIFY_MODE_NORMAL ? 1 : 0;
        } else if (type == XCB_PROPERTY_NOTIFY) {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom;
            m_losses += atom == m_activeWindow ? 1 : 0;
        }
    }
    return m_losses;
}

PanelOnScreen::PanelOnScreen() : desktop(qgetenv("DISPLAY")) {
    windowSystem.desktop = {{.frame = {0, 0, 1024, 768}, .visibleFrame = {0, 0, 1024, 768}}};
    // What the window manager of an earlier test has left behind.
    for (const char* const property :
         {"_NET_SUPPORTING_WM_CHECK", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW"}) {
        xcb_delete_property(desktop.handle(), desktop.root(), desktop.atom(property));
    }
    engine.addImportPath(u"qrc:/qt/qml"_s);
    movePointer({1000, 10});
}

PanelOnScreen::~PanelOnScreen() {
    app().compactWindowController().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    endProgram(); // before what it is made of goes
}

void PanelOnScreen::showPanel() {
    start();
    app().compactWindowController().setPanelFactory(quickCompactPanels(engine));
    app().switchToCompactMode();
    waitForPanel();
}

void PanelOnScreen::waitForPanel() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // an earlier panel
    const auto all = QGuiApplication::topLevelWindows();
    ASSERT_EQ(all.size(), 1);
    panel = qobject_cast<QQuickView*>(all.first());
    ASSERT_NE(panel, nullptr);
    panel->installEventFilter(this);
    ASSERT_EQ(panel->status(), QQuickView::Ready);
    ASSERT_TRUE(desktop.waitUntil([this] {
        return desktop.isShown(static_cast<xcb_window_t>(panel->winId())) &&
               screenColor(panel->position() + QPoint(180, 2)) == QColor(23, 23, 23);
    }));
}

xcb_window_t PanelOnScreen::openTerminal() {
    const xcb_window_t window = desktop.open({.title = "terminal"});
    const std::array<std::uint32_t, 1> white{0xFFFFFF};
    xcb_change_window_attributes(desktop.handle(), window, XCB_CW_BACK_PIXEL, white.data());
    const std::array<std::uint32_t, 4> place{0, 0, 1024, 768};
    xcb_configure_window(desktop.handle(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         place.data());
    xcb_clear_area(desktop.handle(), 1, window, 0, 0, 0, 0);
    if (desktop.managed().empty()) {
        xcb_set_input_focus(desktop.handle(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(window); }));
    } else {
        EXPECT_TRUE(desktop.focus(window));
    }
    return window;
}

void PanelOnScreen::makeFullScreen(xcb_window_t window) {
    constexpr std::uint32_t add = 1;
    desktop.sendToRoot(window, "_NET_WM_STATE", add, desktop.atom("_NET_WM_STATE_FULLSCREEN"));
}

void PanelOnScreen::goToDesktop(std::uint32_t number) {
    desktop.sendToRoot(desktop.root(), "_NET_CURRENT_DESKTOP", number, XCB_CURRENT_TIME);
}

xcb_window_t PanelOnScreen::openDragSource(const QStringList& contents) {
    const auto before = desktop.managed();
    desktop.start(QStringLiteral(QUORVIN_DRAG_SOURCE), contents);
    xcb_window_t source = XCB_WINDOW_NONE;
    EXPECT_TRUE(desktop.waitUntil([&] {
        for (const xcb_window_t window : desktop.managed()) {
            if (std::find(before.begin(), before.end(), window) == before.end()) {
                source = window;
            }
        }
        return source != XCB_WINDOW_NONE;
    }));
    EXPECT_TRUE(desktop.focus(source));
    return source;
}

void PanelOnScreen::dragOntoPanel() {
    movePointer({50, 50});
    press();
    // The source tells of a move when the last one has been answered, so the third shows that it
    // knows the answer to the first.
    int move = 0;
    EXPECT_TRUE(desktop.waitUntil([&] {
        movePointer(background() + QPoint(++move % 20, 0));
        return dragMoves >= 3;
    }));
}

bool PanelOnScreen::eventFilter(QObject* watched, QEvent* event) {
    dragMoves += event->type() == QEvent::DragMove ? 1 : 0;
    dragLeaves += event->type() == QEvent::DragLeave ? 1 : 0;
    return QObject::eventFilter(watched, event);
}

void PanelOnScreen::movePointer(QPoint position) {
    xcb_test_fake_input(desktop.handle(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, desktop.root(),
                        static_cast<std::int16_t>(position.x()),
                        static_cast<std::int16_t>(position.y()), 0);
    xcb_flush(desktop.handle());
}

void PanelOnScreen::press() {
    xcb_test_fake_input(desktop.handle(), XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, 0);
    xcb_flush(desktop.handle());
}

void PanelOnScreen::release() {
    xcb_test_fake_input(desktop.handle(), XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, 0);
    xcb_flush(desktop.handle());
}

void PanelOnScreen::click(QPoint position) {
    movePointer(position);
    press();
    release();
}

void PanelOnScreen::drag(QPoint from, QPoint to) {
    movePointer(from);
    press();
    constexpr int steps = 20;
    for (int step = 1; step <= steps; ++step) {
        movePointer(from + (to - from) * step / steps);
    }
    release();
}

QPoint PanelOnScreen::middleOf(const char* objectName) {
    const auto* const item =
        panel->rootObject()->findChild<QQuickItem*>(QString::fromLatin1(objectName));
    return item ? item->mapToGlobal(item->boundingRect().center()).toPoint() : QPoint();
}

QColor PanelOnScreen::screenColor(QPoint position) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, position.x(), position.y(), 1, 1)
        .toImage()
        .pixelColor(0, 0);
}

QPointF PanelOnScreen::storedPosition() const {
    return {defaults.number(u"compactPanelX"_s).value_or(-1),
            defaults.number(u"compactPanelY"_s).value_or(-1)};
}

} // namespace quorvin::testing
