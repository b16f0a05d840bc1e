#include "platform/linux/x11/X11TextSelections.h"
#include "support/VirtualScheduler.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QString>

#include <optional>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Another program that owns a selection.
class Owner : public QObject {
public:
    enum class Manner { whole, inParts, stopsAfterOnePart, refuses, isSilent };

    Owner(const QByteArray& display, const char* selection, const QByteArray& text, Manner manner)
        : m_connection(display), m_text(text), m_manner(manner) {
        connect(&m_connection, &XcbConnection::eventReceived, this, &Owner::handle);
        m_window = xcb_generate_id(server());
        xcb_create_window(server(), 0, m_window, m_connection.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(server(), m_window, atom(selection), XCB_CURRENT_TIME);
        std::ignore = m_connection.serverTime(); // it is done by then
    }

    bool wasAsked = false;

private:
    xcb_connection_t* server() { return m_connection.handle(); }

    xcb_atom_t atom(const char* name) {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            server(), xcb_intern_atom(server(), 0, qstrlen(name), name), nullptr));
        return reply->atom;
    }

    void handle(const xcb_generic_event_t& event) {
        const auto type = event.response_type & 0x7f;
        if (type == XCB_SELECTION_REQUEST) {
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        } else if (type == XCB_PROPERTY_NOTIFY) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.window == m_asker && notice.state == XCB_PROPERTY_DELETE) {
                giveNextPart();
            }
        }
        xcb_flush(server());
    }

    void answer(const xcb_selection_request_event_t& request) {
        wasAsked = true;
        if (m_manner == Manner::isSilent) {
            return;
        }
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.time = request.time;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        if (m_manner == Manner::whole) {
            notice.property = request.property;
            write(request.requestor, request.property, m_text);
        } else if (m_manner != Manner::refuses) {
            notice.property = request.property;
            m_asker = request.requestor;
            m_property = request.property;
            const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(server(), m_asker, XCB_CW_EVENT_MASK, &mask);
            const auto size = static_cast<std::uint32_t>(m_text.size());
            xcb_change_property(server(), XCB_PROP_MODE_REPLACE, m_asker, m_property, atom("INCR"),
                                32, 1, &size);
        }
        xcb_send_event(server(), 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
    }

    void giveNextPart() {
        constexpr qsizetype partSize = 1000;
        if (m_manner == Manner::stopsAfterOnePart && m_given > 0) {
            return;
        }
        const QByteArray part = m_text.mid(m_given, partSize);
        m_given += part.size();
        write(m_asker, m_property, part); // the last one is empty
    }

    void write(xcb_window_t window, xcb_atom_t property, const QByteArray& text) {
        xcb_change_property(server(), XCB_PROP_MODE_REPLACE, window, property, atom("UTF8_STRING"),
                            8, static_cast<std::uint32_t>(text.size()), text.constData());
    }

    XcbConnection m_connection;
    QByteArray m_text;
    Manner m_manner;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_window_t m_asker = XCB_WINDOW_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    qsizetype m_given = 0;
};

class X11TextSelectionsTest : public ::testing::Test {
protected:
    using Text = std::optional<QString>;

    Task<> ask() {
        m_answer = co_await selections->selectedText();
        m_isAnswered = true;
    }
    Task<> askPasteboard() {
        m_answer = co_await selections->pasteboardText();
        m_isAnswered = true;
    }
    /// The answer, once it has come.
    Text answer() {
        EXPECT_TRUE(desktop.waitUntil([this] { return m_isAnswered; }));
        return m_answer;
    }
    bool isAnswered() const { return m_isAnswered; }

    XServer server;
    XDesktop desktop{server.display()};
    VirtualScheduler scheduler;
    XcbConnection connection{server.display()};
    std::optional<X11TextSelections> selections{std::in_place, scheduler, connection};

private:
    Text m_answer;
    bool m_isAnswered = false;
};

} // namespace

TEST_F(X11TextSelectionsTest, GivesWhatAnotherProgramHasSelected) {
    Owner owner(server.display(), "PRIMARY", "größer \xf0\x9f\x99\x82\nthan", Owner::Manner::whole);
    ask();
    EXPECT_EQ(answer(), u"größer 🙂\nthan"_s);
}

TEST_F(X11TextSelectionsTest, ThePasteboardIsAskedForItself) {
    Owner selected(server.display(), "PRIMARY", "selected", Owner::Manner::whole);
    Owner copied(server.display(), "CLIPBOARD", "copied", Owner::Manner::whole);
    askPasteboard();
    EXPECT_EQ(answer(), u"copied"_s);
    EXPECT_FALSE(selected.wasAsked);
}

TEST_F(X11TextSelectionsTest, WithoutAnOwnerThereIsNothing) {
    ask();
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(X11TextSelectionsTest, AnOwnerWithoutTextGivesNothing) {
    Owner owner(server.display(), "PRIMARY", "an image", Owner::Manner::refuses);
    ask();
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(X11TextSelectionsTest, ALongTextArrivesInParts) {
    const QByteArray text = QByteArray("0123456789").repeated(321);
    Owner owner(server.display(), "PRIMARY", text, Owner::Manner::inParts);
    ask();
    EXPECT_EQ(answer(), QString::fromUtf8(text));
}

TEST_F(X11TextSelectionsTest, ASilentOwnerIsGivenUpAfterASecond) {
    Owner owner(server.display(), "PRIMARY", "never", Owner::Manner::isSilent);
    ask();
    ASSERT_TRUE(desktop.waitUntil([&] { return owner.wasAsked; }));
    scheduler.advance(999ms);
    EXPECT_FALSE(isAnswered());
    scheduler.advance(1ms);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(X11TextSelectionsTest, AnOwnerThatStopsHalfwayGivesNothing) {
    Owner owner(server.display(), "PRIMARY", QByteArray(5000, 'x'),
                Owner::Manner::stopsAfterOnePart);
    ask();
    ASSERT_TRUE(desktop.waitUntil([&] { return owner.wasAsked; }));
    for (int second = 0; second < 3 && !isAnswered(); ++second) {
        scheduler.advance(1s);
        std::ignore = connection.serverTime(); // what has been written is here
        connection.processEvents();
    }
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(X11TextSelectionsTest, WhoeverWaitsAtTheEndIsToldThatThereIsNothing) {
    Owner owner(server.display(), "PRIMARY", "late", Owner::Manner::isSilent);
    ask();
    selections.reset();
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answer(), std::nullopt);
    scheduler.advance(5s); // its timer finds nobody
}

TEST_F(X11TextSelectionsTest, TwoQuestionsAtOnceAreAnsweredEach) {
    Owner selected(server.display(), "PRIMARY", "selected", Owner::Manner::whole);
    Owner copied(server.display(), "CLIPBOARD", "copied", Owner::Manner::whole);
    QStringList answers;
    const auto note = [&answers](Task<Text> question) -> Task<> {
        const Text text = co_await question;
        answers.append(text.value_or(QString()));
    };
    const Task<> first = note(selections->selectedText());
    const Task<> second = note(selections->pasteboardText());
    EXPECT_TRUE(desktop.waitUntil([&] { return answers.size() == 2; }));
    answers.sort();
    EXPECT_EQ(answers, (QStringList{u"copied"_s, u"selected"_s}));
}

TEST_F(X11TextSelectionsTest, WithoutADisplayThereIsNothing) {
    XcbConnection none("nowhere:99");
    X11TextSelections blind(scheduler, none);
    bool isAnswered = false;
    const auto question = [&]() -> Task<> {
        EXPECT_EQ(co_await blind.selectedText(), std::nullopt);
        EXPECT_EQ(co_await blind.pasteboardText(), std::nullopt);
        isAnswered = true;
    };
    question();
    EXPECT_TRUE(isAnswered);
}
