#include "unit/platform/linux/x11/XKeyboardFixture.h"

#include <array>
#include <string_view>

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<KeyEvents::Result> resultOf(Task<KeyEvents::Result> task,
                                          VirtualScheduler& scheduler) {
    const auto result = std::make_shared<std::optional<KeyEvents::Result>>();
    const auto wait = [](Task<KeyEvents::Result> posted,
                         std::shared_ptr<std::optional<KeyEvents::Result>> answer) -> Task<> {
        *answer = co_await posted;
    };
    wait(std::move(task), result);
    scheduler.runPosted();
    return *result;
}

} // namespace

KeyRecorder::KeyRecorder(XDesktop& desktop, const XDesktop::WindowOptions& options)
    : m_desktop(desktop), m_window(desktop.open(options)) {
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_change_window_attributes(desktop.handle(), m_window, XCB_CW_EVENT_MASK, &mask);
    takeFocus();
}

void KeyRecorder::takeFocus() {
    xcb_set_input_focus(m_desktop.handle(), XCB_INPUT_FOCUS_POINTER_ROOT, m_window,
                        XCB_CURRENT_TIME);
    std::ignore = m_desktop.hasFocus(m_window);
}

QString KeyRecorder::take() {
    QStringList lines;
    std::ignore = m_desktop.hasFocus(m_window); // with its reply come the events before it
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_desktop.handle())}) {
        const auto type = event->response_type & 0x7f;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        if (type == XCB_KEY_PRESS && key.event == m_window) {
            lines.append(describe(key, "down"));
        } else if (type == XCB_KEY_RELEASE && key.event == m_window) {
            lines.append(describe(key, "up"));
        }
    }
    return lines.join(u'\n');
}

QString KeyRecorder::describe(const xcb_key_press_event_t& event, const char* direction) {
    const XcbReply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        m_desktop.handle(), xcb_get_keyboard_mapping(m_desktop.handle(), event.detail, 1),
        nullptr));
    std::array<char, 64> name{};
    xkb_keysym_get_name(xcb_get_keyboard_mapping_keysyms(mapping.get())[0], name.data(),
                        name.size());
    QString line = u"%1 %2"_s.arg(QString::fromUtf8(name.data()), QString::fromUtf8(direction));
    const std::array states{
        std::pair(XCB_MOD_MASK_SHIFT, "Shift"),     std::pair(XCB_MOD_MASK_LOCK, "Lock"),
        std::pair(XCB_MOD_MASK_CONTROL, "Control"), std::pair(XCB_MOD_MASK_1, "Alt"),
        std::pair(XCB_MOD_MASK_2, "NumLock"),       std::pair(XCB_MOD_MASK_4, "Super")};
    QStringList held;
    for (const auto& [mask, modifier] : states) {
        if ((event.state & mask) != 0) {
            held.append(QString::fromUtf8(modifier));
        }
    }
    return held.isEmpty() ? line : line + u" ["_s + held.join(u'+') + u']';
}

void XKeyboardTest::SetUp() {
    ASSERT_TRUE(connection.isOpen());
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        desktop.handle(), xcb_input_xi_query_device(desktop.handle(), XCB_INPUT_DEVICE_ALL),
        nullptr));
    for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
         xcb_input_xi_device_info_next(&device)) {
        const std::string_view name(xcb_input_xi_device_info_name(device.data),
                                    device.data->name_len);
        if (name == "Xvfb virtual keyboard" || name == "Xvfb keyboard") {
            m_keyboardDevice = static_cast<std::uint8_t>(device.data->deviceid);
        }
    }
    ASSERT_NE(m_keyboardDevice, 0);
}

std::optional<KeyEvents::Result> XKeyboardTest::post(KeyEvent event) {
    return resultOf(keys->post(event), scheduler);
}

std::optional<KeyEvents::Result> XKeyboardTest::post(KeyEvent event, ProcessID process) {
    return resultOf(keys->post(event, process), scheduler);
}

QString XKeyboardTest::pasteInto(KeyRecorder& recorder) {
    EXPECT_EQ(post(paste(KeyEvent::Direction::down)), KeyEvents::Result::posted);
    EXPECT_EQ(post(paste(KeyEvent::Direction::up)), KeyEvents::Result::posted);
    std::ignore = connection.serverTime(); // the server has done it by now
    return recorder.take();
}

void XKeyboardTest::moveUserKey(xcb_keycode_t key, std::uint8_t eventOfDevice) {
    const auto* const input = xcb_get_extension_data(desktop.handle(), &xcb_input_id);
    xcb_test_fake_input(desktop.handle(),
                        static_cast<std::uint8_t>(input->first_event + eventOfDevice), key,
                        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, m_keyboardDevice);
    std::ignore = isDown(key);
}

bool XKeyboardTest::isDown(xcb_keycode_t key) {
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(desktop.handle(), xcb_query_keymap(desktop.handle()), nullptr));
    return ((reply->keys[key / 8] >> (key % 8)) & 1) != 0;
}

void XKeyboardTest::setSymbol(xcb_keycode_t key, xcb_keysym_t symbol) {
    const std::array symbols{symbol, symbol};
    xcb_change_keyboard_mapping(desktop.handle(), 1, key, symbols.size(), symbols.data());
    std::ignore = isDown(key);
}

void XKeyboardTest::setLayout(const QStringList& arguments) {
    QProcess& tool = desktop.start(u"setxkbmap"_s, arguments);
    ASSERT_TRUE(tool.waitForFinished());
    ASSERT_EQ(tool.exitCode(), 0);
}

} // namespace quorvin::testing
