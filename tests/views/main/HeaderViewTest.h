#pragma once

#include "UpdateState.h"
#include "views/support/ViewTest.h"

#include <QColor>

namespace quorvin::testing {

/// Of an update on offer.
inline const QColor orange(0xff, 0x9f, 0x0a);

/// The header's views, on the program's state or on updates alone.
class HeaderViewTest : public ViewTest {
public:
    ~HeaderViewTest() override {
        close(); // before what its views are bound to
    }

protected:
    /// For views of updates alone.
    UpdateState updates;
    [[nodiscard]] QVariantMap updateState() {
        return {{QStringLiteral("appState"), QVariant::fromValue<QObject*>(&updates)}};
    }
};

} // namespace quorvin::testing
