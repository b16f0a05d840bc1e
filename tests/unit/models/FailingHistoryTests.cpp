#include "AppStateFixture.h"
#include "support/OtherProgram.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A history that fails after the start: the program must not stumble over it.
class FailingHistory : public AppStateTest {
protected:
    /// Writes over all of the file while it is open.
    void damage() {
        QFile file(historyPath());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray noise = QByteArray("not a database ").repeated(file.size() / 15 + 1);
        ASSERT_EQ(file.write(noise), noise.size());
    }

    void takeEndsInTheDraft(const QString& text) {
        app().setDraftText(QString());
        dictate(text);
        EXPECT_EQ(app().draftText(), text);
        EXPECT_EQ(app().state(), AppState::AppMode::ready);
        app().loadPreviousPhrase();
        EXPECT_EQ(app().draftText(), text) << "there is no phrase to go back to";
    }
};

} // namespace

TEST_F(FailingHistory, ATakeEndsInTheDraftWhileTheHistoryIsLocked) {
    start();
    dictate(u"before"_s);
    {
        OtherProgram other(historyPath());
        other.run("BEGIN EXCLUSIVE");
        takeEndsInTheDraft(u"meanwhile"_s);
        app().loadHistory();
        EXPECT_TRUE(app().historyEntries().isEmpty());
    }
    dictate(u"after"_s);
    app().loadHistory();
    EXPECT_EQ(app().historyEntries().size(), 2) << "the history works again";
}

TEST_F(FailingHistory, ATakeEndsInTheDraftWhenTheHistoryWasDamaged) {
    start();
    dictate(u"before"_s);
    damage();
    takeEndsInTheDraft(u"afterwards"_s);
    app().loadHistory();
    EXPECT_TRUE(app().historyEntries().isEmpty());
    app().clearHistory();
    EXPECT_TRUE(app().historyEntries().isEmpty());
}

TEST_F(FailingHistory, ATakeEndsInTheDraftWhenTheHistoryWasDeleted) {
    start();
    dictate(u"before"_s);
    ASSERT_TRUE(QDir(*bundle.applicationSupport).removeRecursively());
    app().setDraftText(QString());
    dictate(u"afterwards"_s);
    EXPECT_EQ(app().draftText(), u"afterwards"_s);
    EXPECT_EQ(app().state(), AppState::AppMode::ready);
}
