#include "theme/SymbolImage.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// All that the views, the status item and the feed show.
const std::vector<QString> shown = {
    u"arrow.clockwise"_s,
    u"arrow.down.app.fill"_s,
    u"arrow.down.circle.fill"_s,
    u"arrow.right"_s,
    u"arrow.right.to.line"_s,
    u"arrow.uturn.up"_s,
    u"bolt.fill"_s,
    u"checkmark"_s,
    u"checkmark.circle.fill"_s,
    u"chevron.down"_s,
    u"chevron.left.forwardslash.chevron.right"_s,
    u"chevron.up"_s,
    u"clock.arrow.circlepath"_s,
    u"cpu"_s,
    u"cpu.fill"_s,
    u"delete.left"_s,
    u"doc.on.doc"_s,
    u"gauge.with.dots.needle.bottom.50percent"_s,
    u"gearshape.2"_s,
    u"gearshape.fill"_s,
    u"info.circle"_s,
    u"info.circle.fill"_s,
    u"keyboard"_s,
    u"keyboard.fill"_s,
    u"line.3.horizontal"_s,
    u"list.bullet.rectangle"_s,
    u"lock.shield.fill"_s,
    u"memorychip.fill"_s,
    u"mic"_s,
    u"mic.fill"_s,
    u"paintpalette.fill"_s,
    u"paperclip"_s,
    u"paperplane.fill"_s,
    u"plus.circle"_s,
    u"slider.horizontal.3"_s,
    u"sparkles"_s,
    u"terminal"_s,
    u"text.bubble"_s,
    u"text.viewfinder"_s,
    u"textformat"_s,
    u"trash"_s,
    u"waveform"_s,
    u"waveform.circle"_s,
    u"xmark"_s,
    u"xmark.octagon.fill"_s,
};

/// Every text in the program's sources that must be a symbol's name: what is called so, and what
/// begins like one and has dots.
QSet<QString> namesInSources() {
    QSet<QString> families;
    for (const QString& name : shown) {
        families.insert(name.section(u'.', 0, 0));
    }
    static const QRegularExpression literal(uR"re("([a-z][a-z0-9]*(?:\.[a-z0-9]+)*)")re"_s);
    static const QRegularExpression naming(uR"re(\b(systemName|symbol|icon)\s*[:=])re"_s);
    QSet<QString> names;
    QDirIterator files(QStringLiteral(QUORVIN_SOURCES), {u"*.qml"_s, u"*.cpp"_s, u"*.h"_s},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            const bool isNamed = line.contains(naming);
            for (auto match = literal.globalMatch(line); match.hasNext();) {
                const QString text = match.next().captured(1);
                if (isNamed ||
                    (text.contains(u'.') && families.contains(text.section(u'.', 0, 0)))) {
                    names.insert(text);
                }
            }
        }
    }
    return names;
}

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

TEST(Symbols, ThereIsOneDrawingForEachThatIsShown) {
    QStringList expected;
    for (const QString& name : shown) {
        expected.append(name + u".svg"_s);
    }
    QStringList actual = drawings();
    expected.sort();
    actual.sort();
    EXPECT_EQ(actual, expected);
}

TEST(Symbols, EveryNameInTheSourcesHasADrawing) {
    const QSet<QString> names = namesInSources();
    EXPECT_TRUE(names.contains(u"delete.left"_s)) << "a control's";
    EXPECT_TRUE(names.contains(u"waveform.circle"_s)) << "the feed's";
    for (const QString& name : names) {
        EXPECT_TRUE(QFile::exists(u":/quorvin/icons/%1.svg"_s.arg(name))) << name.toStdString();
    }
}

TEST(Symbols, EveryDrawingKeepsToTheGridAndToOneStroke) {
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
            const auto value = [&](const QString& key) { return attributes.value(key).toString(); };
            if (xml.name() == u"svg") {
                EXPECT_EQ(value(u"viewBox"_s), u"0 0 24 24");
                continue;
            }
            EXPECT_TRUE((QSet{u"#000"_s, u"#fff"_s, u"none"_s}).contains(value(u"fill"_s)));
            if (attributes.hasAttribute(u"stroke"_s)) {
                EXPECT_TRUE((QSet{u"#000"_s, u"#fff"_s}).contains(value(u"stroke"_s)));
                EXPECT_EQ(value(u"stroke-width"_s), u"1.75");
                EXPECT_EQ(value(u"stroke-linecap"_s), u"round");
                EXPECT_EQ(value(u"stroke-linejoin"_s), u"round");
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
    EXPECT_NEAR(center.red(), 10, 1);
    EXPECT_NEAR(center.green(), 200, 1);
    EXPECT_NEAR(center.blue(), 30, 1);
    EXPECT_NEAR(center.alpha(), 128, 1);
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
