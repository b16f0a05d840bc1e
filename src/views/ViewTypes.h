#pragma once

namespace quorvin {

/// Makes the types of the module Quorvin known to QML; once, before the first view is loaded. The
/// linker would leave their own registration out of a program that names none of them.
void registerViewTypes();

} // namespace quorvin
