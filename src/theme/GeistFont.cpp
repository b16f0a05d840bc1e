#include "theme/GeistFont.h"

#include <QStringList>

#include <cmath>

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

QFont GeistFont::font(double size, QFont::Weight weight) {
    QFont font(QStringList{name(weight), u"Geist"_s, u"Inter"_s});
    font.setWeight(weight);
    font.setPixelSize(static_cast<int>(std::lround(size)));
    return font;
}

} // namespace quorvin
