#pragma once

#include "refhost/trace/Traced.h"
#include "server/adapters/ComEnvironment.h"

#include <memory>

namespace server {

/// The world as COM offers it, with everything noted that the classes ask of a database. What a component asks for
/// itself is not seen; a text that a class hands it to open is the class's own.
class TracedComEnvironment final : public refhost::Traced<ComEnvironment> {
public:
    /// @param trace where to note, or nullptr; it outlives everything created here
    explicit TracedComEnvironment(refhost::Trace* trace) : Traced(trace), trace_(trace) {}

    std::unique_ptr<host::ZendaT> CreateZendaT() override {
        return refhost::WithTracedTexts(trace_, Traced::CreateZendaT());
    }

private:
    refhost::Trace* trace_;
};

} // namespace server
