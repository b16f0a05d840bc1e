#include "fuzz/Fuzzing.h"
#include "platform/linux/terminals/BusReplies.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

namespace {

/// A value as Qt gives it of a reply. The first letter is the signature's.
QVariant value(const QByteArray& part, int depth = 0) {
    const QByteArray content = part.mid(1);
    const QString text = QString::fromUtf8(content);
    switch (part.isEmpty() ? ' ' : part[0]) {
    case 'y':
        return QVariant::fromValue(content.isEmpty() ? uchar(0) : uchar(content[0]));
    case 'b':
        return content == "true";
    case 'i':
        return content.toInt();
    case 'u':
        return content.toUInt();
    case 'x':
        return content.toLongLong();
    case 't':
        return content.toULongLong();
    case 'd':
        return content.toDouble();
    case 's':
        return text;
    case 'o':
        return QVariant::fromValue(QDBusObjectPath(text));
    case 'g':
        return QVariant::fromValue(QDBusSignature(text));
    case 'a':
        return text.split(u'\n');
    case 'v': {
        constexpr int deepest = 32; // libdbus lets none deeper through
        return depth < deepest ? QVariant::fromValue(QDBusVariant(value(content, depth + 1)))
                               : QVariant();
    }
    case '(':
        return QVariant::fromValue(QDBusArgument()); // a structure, which Qt leaves as it is
    default:
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // the values of a reply
    QVariantList reply;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        reply.append(value(parts[i]));
    }
    const auto process = busReplies::process(reply);
    require(!process || *process > 0, "a process has a number");
    for (const QString& text : busReplies::texts(reply)) {
        require(text.size() <= static_cast<qsizetype>(size), "a text is in the reply");
    }
    const QStringList children = busReplies::childNames(reply);
    require(children.size() <= static_cast<qsizetype>(size), "each child stands in the reply");
    if (process) {
        require(busReplies::process({QVariant(static_cast<uint>(*process))}) == process,
                "a number reads back as it was written");
    }
    return 0;
}
