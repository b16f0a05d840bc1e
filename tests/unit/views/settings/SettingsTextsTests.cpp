#include "theme/HexColor.h"
#include "views/settings/PermissionStatuses.h"
#include "views/settings/SettingsChoices.h"
#include "views/settings/SettingsTabs.h"
#include "views/settings/SettingsTexts.h"
#include "views/settings/UpdateStatus.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

using Tab = SettingsTabs::SettingsTab;
using Status = PermissionStatuses::PermissionStatus;

bool hasSymbol(const QString& name) {
    return QFile::exists(u":/quorvin/icons/%1.svg"_s.arg(name));
}

UpdatePhase phase(const decltype(UpdatePhase::value)& value) {
    UpdatePhase result;
    result.value = value;
    return result;
}

} // namespace

TEST(SettingsTabs, HaveTitlesAndSymbols) {
    ASSERT_EQ(SettingsTabs::count(), 8);
    QStringList titles;
    for (int tab = 0; tab < SettingsTabs::count(); ++tab) {
        titles.append(SettingsTabs::title(static_cast<Tab>(tab)));
        EXPECT_TRUE(hasSymbol(SettingsTabs::symbol(static_cast<Tab>(tab)))) << tab;
    }
    EXPECT_EQ(titles, QStringList({u"General"_s, u"Audio"_s, u"Appearance"_s, u"Agents"_s,
                                   u"Shortcuts"_s, u"Permissions"_s, u"Updates"_s, u"About"_s}));
    EXPECT_EQ(SettingsTabs::symbol(Tab::permissions), u"lock.shield.fill"_s);
}

TEST(SettingsChoices, OfferTheLanguagesByTheirCodes) {
    QStringList codes;
    for (const SettingsChoice& language : SettingsChoices::languages()) {
        codes.append(language.value);
    }
    EXPECT_EQ(codes, QStringList({u"auto"_s, u"en"_s, u"uk"_s, u"ru"_s, u"es"_s, u"fr"_s, u"de"_s,
                                  u"zh"_s, u"ja"_s}));
    EXPECT_EQ(SettingsChoices::models().at(1),
              (SettingsChoice{u"Medium (balanced)"_s, u"medium"_s}));
}

TEST(SettingsChoices, OfferEveryMicrophoneOnce) {
    const QList<SettingsChoice> systemDefault{{u"System Default"_s, u"default"_s}};
    EXPECT_EQ(SettingsChoices::microphones({}), systemDefault);
    EXPECT_EQ(SettingsChoices::microphones(
                  {{u"default"_s, u"System Default"_s, 0}, {u"7"_s, u"Desk"_s, 7}}),
              systemDefault + QList<SettingsChoice>({{u"Desk"_s, u"7"_s}}));
}

TEST(SettingsTexts, WriteTheGainWithItsSign) {
    EXPECT_EQ(SettingsTexts::gain(0), u"+0 dB"_s);
    EXPECT_EQ(SettingsTexts::gain(7), u"+7 dB"_s);
    EXPECT_EQ(SettingsTexts::gain(-12), u"-12 dB"_s);
}

TEST(SettingsTexts, CutPercentsToWholeOnes) {
    EXPECT_EQ(SettingsTexts::percent(0.5), u"0%"_s);
    EXPECT_EQ(SettingsTexts::percent(4.5), u"4%"_s);
    EXPECT_EQ(SettingsTexts::percent(5), u"5%"_s);
    for (int step = 6; step <= 20; ++step) {
        EXPECT_EQ(SettingsTexts::percentOfFraction(step * 5 / 100.0), u"%1%"_s.arg(step * 5));
    }
    EXPECT_EQ(SettingsTexts::percentOfFraction(0.999), u"99%"_s);
    EXPECT_EQ(SettingsTexts::percentOfFraction(1e30).last(1), u"%"_s) << "whatever the file holds";
}

TEST(SettingsTexts, CapitalizeNames) {
    EXPECT_EQ(SettingsTexts::capitalized(u"dna"_s), u"Dna"_s);
    EXPECT_EQ(SettingsTexts::capitalized(u""_s), u""_s);
}

TEST(SettingsTexts, WarnOfALoudSignal) {
    EXPECT_EQ(SettingsTexts::levelColor(0), hexColor(u"22c55e"));
    EXPECT_EQ(SettingsTexts::levelColor(0.6), hexColor(u"22c55e"));
    EXPECT_EQ(SettingsTexts::levelColor(0.61), hexColor(u"f59e0b"));
    EXPECT_EQ(SettingsTexts::levelColor(0.85), hexColor(u"f59e0b"));
    EXPECT_EQ(SettingsTexts::levelColor(0.86), hexColor(u"ef4444"));
}

TEST(SettingsTexts, NameTheSystem) {
    EXPECT_FALSE(SettingsTexts::platform().isEmpty());
    EXPECT_FALSE(SettingsTexts::platform().contains(u"macOS"_s));
}

TEST(PermissionStatuses, AreUnknownOnlyBeforeTheFirstAnswer) {
    EXPECT_EQ(PermissionStatuses::of(true, false), Status::granted);
    EXPECT_EQ(PermissionStatuses::of(true, true), Status::granted);
    EXPECT_EQ(PermissionStatuses::of(false, true), Status::denied);
    EXPECT_EQ(PermissionStatuses::of(false, false), Status::unknown);
}

TEST(PermissionStatuses, HaveLabels) {
    EXPECT_EQ(PermissionStatuses::label(Status::granted), u"Granted"_s);
    EXPECT_EQ(PermissionStatuses::label(Status::denied), u"Denied"_s);
    EXPECT_EQ(PermissionStatuses::label(Status::unknown), u"Unknown"_s);
    EXPECT_NE(PermissionStatuses::color(Status::granted),
              PermissionStatuses::color(Status::denied));
}

TEST(UpdateStatus, TellsThePhaseBeforeTheVersion) {
    const QString newer = u"2.0"_s;
    EXPECT_EQ(UpdateStatus::text({}, false, newer), u"Up to date"_s);
    EXPECT_EQ(UpdateStatus::text({}, true, newer), u"2.0 available"_s);
    EXPECT_EQ(UpdateStatus::text(phase(UpdatePhase::Failed{u"no %1"_s}), true, newer),
              u"Failed: no %1"_s);
    EXPECT_EQ(UpdateStatus::text(phase(UpdatePhase::Downloading{0.999}), true, newer),
              u"Downloading… 99%"_s);
    EXPECT_EQ(UpdateStatus::text(phase(UpdatePhase::Installing{}), true, newer), u"Installing…"_s);
}

TEST(UpdateStatus, IsUpToDateAtRestAlone) {
    EXPECT_TRUE(UpdateStatus::isUpToDate({}, false));
    EXPECT_FALSE(UpdateStatus::isUpToDate({}, true));
    EXPECT_FALSE(UpdateStatus::isUpToDate(phase(UpdatePhase::Failed{u"x"_s}), false));
}

TEST(UpdateStatus, NamesBothVersions) {
    EXPECT_EQ(UpdateStatus::version(u"1.2"_s, false, u"9"_s), u"v1.2"_s);
    EXPECT_EQ(UpdateStatus::version(u"1.2"_s, true, u"2.0"_s), u"v1.2 → v2.0"_s);
}

TEST(ReleaseNotes, HaveSymbolsAndTexts) {
    const auto notes = UpdateStatus::releaseNotes();
    ASSERT_EQ(notes.size(), 11);
    for (const ReleaseNote& note : notes) {
        EXPECT_TRUE(hasSymbol(note.symbol)) << note.symbol.toStdString();
    }
    EXPECT_EQ(notes.first().text, u"Geist typeface across the whole app"_s);
    EXPECT_EQ(notes.first().color, hexColor(u"00e5ff"));
    EXPECT_EQ(notes.last().text,
              u"All settings persist across restarts (language, device, gain…)"_s);
}
