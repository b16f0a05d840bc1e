#include "platform/linux/terminals/BusReplies.h"

#include <QXmlStreamReader>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::busReplies {

std::optional<ProcessID> process(const QVariantList& reply) {
    const uint number = reply.value(0).toUInt();
    return number > 0 && number <= std::numeric_limits<ProcessID>::max()
               ? std::optional(static_cast<ProcessID>(number))
               : std::nullopt;
}

QStringList texts(const QVariantList& reply) {
    return reply.value(0).toStringList();
}

QStringList childNames(const QVariantList& reply) {
    QStringList names;
    QXmlStreamReader xml(reply.value(0).toString());
    xml.readNextStartElement();
    while (xml.readNextStartElement()) {
        if (xml.name() == u"node" && xml.attributes().hasAttribute(u"name"_s)) {
            names.append(xml.attributes().value(u"name"_s).toString());
        }
        xml.skipCurrentElement(); // a child may describe children of its own
    }
    return names;
}

} // namespace quorvin::busReplies
