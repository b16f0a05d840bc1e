#pragma once

#include <cstdlib>
#include <memory>

namespace quorvin {

/// Releases what xcb hands out: replies, events and errors.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T>
using XcbReply = std::unique_ptr<T, XcbFree>;

} // namespace quorvin
