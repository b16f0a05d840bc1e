#include "theme/GeistFont.h"

#include <QStringList>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

struct Face {
    QString name;
    QFont::Weight weight; ///< of the face itself
};

Face faceFor(QFont::Weight weight) {
    switch (weight) {
    case QFont::Black:
    case QFont::ExtraBold:
        return {u"Geist-Black"_s, QFont::Black};
    case QFont::Bold:
        return {u"Geist-Bold"_s, QFont::Bold};
    case QFont::DemiBold:
        return {u"Geist-SemiBold"_s, QFont::DemiBold};
    case QFont::Medium:
        return {u"Geist-Medium"_s, QFont::Medium};
    case QFont::Light:
    case QFont::ExtraLight:
    case QFont::Thin:
        return {u"Geist-Light"_s, QFont::Light};
    default:
        return {u"Geist-Regular"_s, QFont::Normal};
    }
}

} // namespace

QString GeistFont::name(QFont::Weight weight) {
    return faceFor(weight).name;
}

QFont GeistFont::font(double size, QFont::Weight weight) {
    const Face face = faceFor(weight);
    QFont font(QStringList{face.name, u"Geist"_s, u"Inter"_s});
    font.setWeight(face.weight);
    font.setPixelSize(static_cast<int>(std::lround(size)));
    return font;
}

} // namespace quorvin
