#include "theme/GeistFont.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QString GeistFont::name(QFont::Weight weight) {
    switch (weight) {
    case QFont::Black:
    case QFont::ExtraBold:
        return u"Geist-Black"_s;
    case QFont::Bold:
        return u"Geist-Bold"_s;
    case QFont::DemiBold:
        return u"Geist-SemiBold"_s;
    case QFont::Medium:
        return u"Geist-Medium"_s;
    case QFont::Light:
    case QFont::ExtraLight:
    case QFont::Thin:
        return u"Geist-Light"_s;
    default:
        return u"Geist-Regular"_s;
    }
}

QStringList GeistFont::families() {
    return {u"Geist"_s, u"Inter"_s};
}

} // namespace quorvin
