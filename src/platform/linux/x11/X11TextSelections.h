#pragma once

#include "platform/TextSelections.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QByteArray>
#include <QObject>

#include <list>

namespace quorvin {

class Scheduler;

/// Asks the owners of the selections PRIMARY and CLIPBOARD for their text, without waiting for
/// them: an owner that has stopped answering holds up nobody. The protocol is that of the
/// Inter-Client Communication Conventions Manual, sections 2.4 and 2.7.2.
class X11TextSelections final : public QObject, public TextSelections {
    Q_OBJECT

public:
    X11TextSelections(Scheduler& scheduler, XcbConnection& connection);
    /// Whoever still waits is told that there is nothing.
    ~X11TextSelections() override;

    Task<std::optional<QString>> selectedText() override;
    Task<std::optional<QString>> pasteboardText() override;

private:
    /// One question, with a window of its own that the answer is left at.
    struct Request {
        xcb_window_t window = XCB_WINDOW_NONE;
        QByteArray received;
        bool isIncremental = false;
        qsizetype sizeAtLastLook = 0;
        Pending<std::optional<QString>> answer;
    };
    using Requests = std::list<Request>;

    [[nodiscard]] Task<std::optional<QString>> read(xcb_atom_t selection);
    void giveUpWhenSilent(xcb_window_t window);
    void handle(const xcb_generic_event_t& event);
    void takeAnswer(Requests::iterator request, xcb_atom_t property);
    void takePart(Requests::iterator request, xcb_atom_t property);
    void finish(Requests::iterator request, std::optional<QString> text);
    [[nodiscard]] Requests::iterator requestOf(xcb_window_t window);
    /// What the owner has written, which goes from the window by that.
    [[nodiscard]] XcbReply<xcb_get_property_reply_t> take(const Request& request,
                                                          xcb_atom_t property);

    Scheduler& m_scheduler;
    XcbConnection& m_connection;
    xcb_atom_t m_clipboard = XCB_ATOM_NONE;
    xcb_atom_t m_incremental = XCB_ATOM_NONE;
    Requests m_requests;
};

} // namespace quorvin
