#include "fuzz/Fuzzing.h"
#include "platform/linux/x11/ApplicationIdentifiers.h"
#include "platform/linux/x11/PropertyReply.h"
#include "platform/linux/x11/WindowIdentity.h"

#include <QSysInfo>

#include <cstring>
#include <limits>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

namespace {

/// The X server's answer, in memory of just its size. The first letter of `part` tells the value's
/// width and type: "s" and "u" are bytes of Latin-1 and UTF-8, "w" 16-bit and "n" 32-bit values.
class Reply {
public:
    explicit Reply(const QByteArray& part) {
        const char kind = part.isEmpty() ? ' ' : part[0];
        const QByteArray value = part.mid(1);
        xcb_get_property_reply_t head{};
        head.format = kind == 's' || kind == 'u' ? 8 : kind == 'w' ? 16 : kind == 'n' ? 32 : 0;
        head.type = kind == 's' ? XCB_ATOM_STRING : 300U;
        head.value_len =
            head.format == 0 ? 0 : static_cast<std::uint32_t>(value.size() / (head.format / 8));
        m_memory.reset(new char[sizeof head + static_cast<std::size_t>(value.size())]);
        std::memcpy(m_memory.get(), &head, sizeof head);
        std::memcpy(m_memory.get() + sizeof head, value.constData(),
                    static_cast<std::size_t>(value.size()));
    }

    [[nodiscard]] const xcb_get_property_reply_t* get() const {
        return reinterpret_cast<const xcb_get_property_reply_t*>(m_memory.get());
    }

private:
    std::unique_ptr<char[]> m_memory;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // _NET_WM_PID, WM_CLIENT_MACHINE, WM_CLASS, a title
    const Reply process(parts[0]);
    const Reply machine(parts[1]);
    const Reply windowClass(parts[2]);
    const Reply title(parts[3]);

    for (const Reply* const reply : {&process, &machine, &windowClass, &title}) {
        require(propertyReply::numbers(reply->get()).empty() ||
                    propertyReply::bytes(reply->get()).isEmpty(),
                "a property has numbers or bytes");
        require(propertyReply::text(reply->get()).size() <=
                    propertyReply::bytes(reply->get()).size(),
                "a text has no more characters than bytes");
    }
    const auto numbers = propertyReply::numbers(process.get());
    const auto number = numbers.empty() ? std::nullopt : std::optional(numbers[0]);
    for (const QString& where : {propertyReply::text(machine.get()), QString(),
                                 QSysInfo::machineHostName() + u".example"_s}) {
        const auto owner = windowIdentity::process(number, where);
        require(!owner || (*owner > 0 && static_cast<std::uint32_t>(*owner) == number),
                "a process is the one that is named");
    }
    const QByteArray classBytes = propertyReply::bytes(windowClass.get());
    const windowIdentity::Names names = windowIdentity::names(classBytes);
    require(!names.instanceName.contains(QChar::Null) && !names.className.contains(QChar::Null),
            "a name ends at the NUL");
    require(names.instanceName.size() + names.className.size() <= classBytes.size(),
            "names are in the property");
    const auto identifier = terminalBundleIdentifier(names.instanceName, names.className,
                                                     propertyReply::text(title.get()));
    require(!identifier || identifier->contains(u'.'), "an identifier is a reverse domain name");
    return 0;
}
