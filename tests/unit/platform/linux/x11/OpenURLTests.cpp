#include "platform/linux/x11/UserGuidePages.h"
#include "platform/linux/x11/X11Workspace.h"

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Stands in for the desktop's own way to open a document.
class Opener final : public QObject {
    Q_OBJECT
public:
    Opener() {
        for (const QString& scheme : schemes) {
            QDesktopServices::setUrlHandler(scheme, this, "open");
        }
    }
    ~Opener() override {
        for (const QString& scheme : schemes) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    Q_SLOT void open(const QUrl& url) { opened.append(url.toString()); }

    QStringList opened;

private:
    const QStringList schemes{u"file"_s, u"http"_s, u"https"_s, u"mailto"_s,
                              u"x-apple.systempreferences"_s};
};

class OpenURLTest : public ::testing::Test {
protected:
    void writeGuidePage(const QString& name) {
        QFile page(guide.filePath(name));
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    }

    static QString settingsPage(const QString& anchor) {
        return u"x-apple.systempreferences:com.apple.preference.security?"_s + anchor;
    }

    QTemporaryDir guide;
    XcbConnection noDisplay{":no-such-display"};
    X11Workspace workspace{noDisplay, guide.path()};
    Opener opener;
};

} // namespace

TEST_F(OpenURLTest, ASettingsPageOpensItsPageOfTheGuide) {
    const std::pair<QString, QString> pages[] = {
        {u"Privacy_Microphone"_s, u"microphone.html"_s},
        {u"Privacy_Accessibility"_s, u"accessibility.html"_s},
        {u"Privacy_Automation"_s, u"automation.html"_s},
    };
    for (const auto& [anchor, page] : pages) {
        opener.opened.clear();
        writeGuidePage(page);
        EXPECT_EQ(workspace.openURL(settingsPage(anchor)), Workspace::Request::made);
        EXPECT_EQ(opener.opened, QStringList{u"file://"_s + guide.filePath(page)});
    }
}

TEST_F(OpenURLTest, ASettingsPageWithoutAPageOfTheGuideIsNotPossible) {
    EXPECT_EQ(workspace.openURL(settingsPage(u"Privacy_Microphone"_s)),
              Workspace::Request::notPossibleHere);
    writeGuidePage(u"microphone.html"_s);
    EXPECT_EQ(workspace.openURL(settingsPage(u"Privacy_Camera"_s)),
              Workspace::Request::notPossibleHere);
    EXPECT_EQ(opener.opened, QStringList());
}

TEST_F(OpenURLTest, WebPagesAndFilesGoToTheDesktop) {
    EXPECT_EQ(workspace.openURL(u"https://example.org/a?b=c"_s), Workspace::Request::made);
    EXPECT_EQ(workspace.openURL(u"http://example.org/"_s), Workspace::Request::made);
    EXPECT_EQ(workspace.openURL(u"file:///tmp/a.txt"_s), Workspace::Request::made);
    EXPECT_EQ(opener.opened, (QStringList{u"https://example.org/a?b=c"_s, u"http://example.org/"_s,
                                          u"file:///tmp/a.txt"_s}));
}

TEST_F(OpenURLTest, NothingElseIsOpened) {
    for (const auto& url :
         {u""_s, u"/tmp/a.txt"_s, u"mailto:a@example.org"_s, u"http://[::bad"_s}) {
        EXPECT_EQ(workspace.openURL(url), Workspace::Request::notPossibleHere)
            << qUtf8Printable(url);
    }
    EXPECT_EQ(opener.opened, QStringList());
}

TEST_F(OpenURLTest, AWebPageIsNeverAPageOfTheGuide) {
    writeGuidePage(u"microphone.html"_s);
    EXPECT_EQ(userGuidePage(u"https://example.org/?Privacy_Microphone"_s, guide.path()),
              std::nullopt);
}

#include "OpenURLTests.moc"
