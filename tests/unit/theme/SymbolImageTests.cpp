#include "theme/SymbolImage.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QStringList drawings() {
    return QDir(u":/quorvin/icons"_s).entryList({u"*.svg"_s});
}

int opaquePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y).alpha() > 200 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

TEST(Symbols, EveryDrawingKeepsToTheGridAndToOneStrokeWeight) {
    ASSERT_GE(drawings().size(), 45);
    for (const QString& name : drawings()) {
        SCOPED_TRACE(name.toStdString());
        QFile file(u":/quorvin/icons/"_s + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            const auto attributes = xml.attributes();
            if (xml.name() == u"svg") {
                EXPECT_EQ(attributes.value(u"viewBox"_s), u"0 0 24 24");
            } else if (attributes.hasAttribute(u"stroke"_s)) {
                EXPECT_EQ(attributes.value(u"stroke-width"_s), u"1.75");
            }
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    }
}

TEST(Symbols, EveryDrawingShowsSomethingAndStaysWithinItsSquare) {
    for (const QString& name : drawings()) {
        SCOPED_TRACE(name.toStdString());
        const QImage image = symbolImage(name.chopped(4), 96, Qt::white);
        ASSERT_FALSE(image.isNull());
        EXPECT_GT(opaquePixels(image), 300);
        for (int i = 0; i < 96; ++i) {
            EXPECT_EQ(image.pixelColor(i, 0).alpha(), 0);
            EXPECT_EQ(image.pixelColor(i, 95).alpha(), 0);
            EXPECT_EQ(image.pixelColor(0, i).alpha(), 0);
            EXPECT_EQ(image.pixelColor(95, i).alpha(), 0);
        }
    }
}

TEST(Symbols, AreDrawnInTheColourAskedFor) {
    const QImage image = symbolImage(u"xmark"_s, 24, QColor(10, 200, 30, 128));
    const QColor center = image.pixelColor(12, 12);
    EXPECT_EQ(center.rgb(), QColor(10, 200, 30).rgb());
    EXPECT_NEAR(center.alpha(), 128, 2);
}

TEST(Symbols, MarksInFilledShapesAreLeftOut) {
    const QImage image = symbolImage(u"info.circle.fill"_s, 96, Qt::black);
    EXPECT_EQ(image.pixelColor(48, 56).alpha(), 0) << "the letter";
    EXPECT_EQ(image.pixelColor(20, 48).alpha(), 255) << "the disc";
}

TEST(Symbols, AnUnknownNameGivesNothing) {
    EXPECT_TRUE(symbolImage(u"no.such.symbol"_s, 24, Qt::black).isNull());
    EXPECT_TRUE(symbolImage(u"mic"_s, 0, Qt::black).isNull());
}
