#include "views/ViewTypes.h"

/// From the source that the build makes of the module.
void qml_register_types_Quorvin(); // NOLINT: its name

namespace quorvin {

void registerViewTypes() {
    qml_register_types_Quorvin();
}

} // namespace quorvin
