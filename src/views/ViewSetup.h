#pragma once

namespace quorvin {

/// Gives the application the looks of all its views, and makes the types of the module Quorvin
/// known to QML; once, before the first view is loaded.
void setUpViews();

} // namespace quorvin
