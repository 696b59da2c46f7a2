#pragma once

#include <libxml/parser.h>

namespace refhost::xml {

/// Makes libxml2 ready. It is to be called before anything else is asked of libxml2, which several threads may do at
/// once.
inline void MakeReady() {
    static const bool ready = (xmlInitParser(), true);
    static_cast<void>(ready);
}

} // namespace refhost::xml
