#pragma once

#include "platform/qt/QtWindowSystem.h"
#include "theme/ThemeManager.h"
#include "unit/models/AppStateFixture.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QPoint>
#include <QQmlEngine>
#include <QQuickView>

namespace quorvin::testing {

/// Hears each time that a window loses the keyboard, or another one becomes the active window.
class FocusWatch {
public:
    FocusWatch(XDesktop& desktop, xcb_window_t window);
    ~FocusWatch();
    FocusWatch(const FocusWatch&) = delete;
    FocusWatch& operator=(const FocusWatch&) = delete;

    /// How often it has happened so far, also if only for a moment.
    [[nodiscard]] int losses();

private:
    xcb_connection_t* m_handle;
    xcb_atom_t m_activeWindow;
    int m_losses = 0;
};

/// The panel in the fake program on a real X server, and a user with a mouse.
class PanelOnScreen : public QObject, public AppStateTest {
public:
    ~PanelOnScreen() override;

protected:
    PanelOnScreen();

    /// Starts the program in compact mode and waits for the panel.
    void showPanel();
    /// Waits for the panel of a program that is in compact mode.
    void waitForPanel();
    /// Opens another program's window, white, that covers the screen and has the keyboard.
    xcb_window_t openTerminal();
    void makeFullScreen(xcb_window_t window);
    void goToDesktop(std::uint32_t number);
    /// Opens a program at the upper left from which these addresses, or a text, can be dragged, and
    /// gives it the keyboard.
    xcb_window_t openDragSource(const QStringList& contents);

    void movePointer(QPoint position);
    void press();
    void release();
    void click(QPoint position);
    /// Moves the pressed pointer in steps, as a hand does.
    void drag(QPoint from, QPoint to);

    /// From the drag source to the panel, without letting go.
    void dragOntoPanel();

    /// The middle of a control of the panel, on the screen.
    [[nodiscard]] QPoint middleOf(const char* objectName);
    /// Somewhere on the strip without anything on it.
    [[nodiscard]] QPoint background() const { return panel->position() + QPoint(100, 24); }
    [[nodiscard]] QColor screenColor(QPoint position);
    [[nodiscard]] QPointF storedPosition() const;

    XDesktop desktop;
    ThemeManager themes{defaults};
    QtWindowSystem windows;
    QQmlEngine engine;
    QPointer<QQuickView> panel;
    // Of another program's drag over the panel.
    int dragMoves = 0;
    int dragLeaves = 0;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace quorvin::testing
