#include "views/support/ViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class MainView : public ViewTest {
protected:
    void showView() {
        start();
        show(u"MainView { width: 580; height: 850 }"_s, appState());
    }
    [[nodiscard]] double page(const char* property) {
        (void)grab(); // lays out what has changed
        return item(u"page"_s)->property(property).toDouble();
    }
    void attach(int count) {
        QList<QUrl> images;
        for (int i = 0; i < count; ++i) {
            images.append(QUrl::fromLocalFile(u"/pictures/screen %1.png"_s.arg(i)));
        }
        app().attachImages(images);
        (void)grab();
    }
};

} // namespace

TEST_F(MainView, FollowsADraftThatGrowsPastTheBottomBar) {
    showView();
    click(u"draftToggleButton"_s);
    advance(250ms);
    EXPECT_EQ(page("contentY"), 0);
    app().setDraftText(QString(u"a line\n"_s).repeated(20));
    attach(18);
    EXPECT_GT(page("maximumContentY"), 20);
    EXPECT_EQ(page("contentY"), page("maximumContentY"));
    app().clearDraft();
    EXPECT_EQ(page("contentY"), 0);
}

TEST_F(MainView, FollowsTheFeedThatComesUnderTheDraft) {
    showView();
    click(u"draftToggleButton"_s);
    advance(250ms);
    for (int i = 0; i < 10; ++i) {
        app().log(ActivityType::info, u"entry"_s);
    }
    click(u"activityLogButton"_s);
    advance(300ms);
    EXPECT_GT(page("maximumContentY"), 20);
    EXPECT_EQ(page("contentY"), page("maximumContentY"));
}
