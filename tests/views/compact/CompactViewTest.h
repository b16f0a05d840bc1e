#pragma once

#include "views/support/ViewTest.h"

namespace quorvin::testing {

/// The compact view on the panel's ground. The program has its model and permissions unless the
/// test has taken them away.
class CompactViewTest : public ViewTest {
protected:
    void showView();
    /// Attaches "/pictures/screen 0.png" and so on.
    void attach(int count);
    /// Ends the running take and leaves the engine at work until `answerEngine`.
    void transcribe();
};

} // namespace quorvin::testing
