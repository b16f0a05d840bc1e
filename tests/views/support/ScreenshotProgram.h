#pragma once

#include "views/support/ViewTest.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QString>
#include <QStringList>

#include <memory>

namespace quorvin::testing {

/// What the programs of scripts/screenshots.sh have in common. Their arguments are the directory
/// for the pictures and, if not the usual ones, the themes.
///
///     int main(int argc, char** argv) {
///         const ScreenshotProgram program(argc, argv);
///         for (const QString& theme : program.themes({u"razer"_s, u"latte"_s})) {
///             program.save(u"ring-"_s + theme, RingScene(theme).picture());
///         }
///     }
class ScreenshotProgram {
public:
    /// Makes the application.
    ScreenshotProgram(int& argc, char** argv);

    [[nodiscard]] QStringList themes(const QStringList& usual) const;
    /// As "<name>@<scale>x.png", with the scale that QT_SCALE_FACTOR says. Ends the program where
    /// that can't be done.
    void save(const QString& name, const QImage& picture) const;

private:
    std::unique_ptr<QApplication> m_application;
    QDir m_directory;
};

/// A harness of tests, to make pictures instead: of a machine with a microphone.
template <typename Test>
class Scene : public Test {
public:
    explicit Scene(const QString& themeName) {
        this->audioHost.deviceList = {
            {.number = 7, .name = "Desk Microphone", .inputChannelCount = 1}};
        this->defaults.setString(QStringLiteral("selectedDevice"), QStringLiteral("7"));
        this->defaults.setString(QStringLiteral("selectedTheme"), themeName);
        this->theme.setTheme(themeName);
    }
    void TestBody() override {}
};

} // namespace quorvin::testing
