#include "foundation/Diagnostics.h"

#include <mutex>
#include <utility>

namespace corvane {

namespace {

DiagnosticSink& sink() {
    static DiagnosticSink current;
    return current;
}

} // namespace

void diagnostic(std::initializer_list<std::string_view> pieces) {
    if (!sink()) return;
    std::string line;
    for (const auto piece : pieces)
        line += piece;
    static std::mutex oneLineAtATime;
    const std::lock_guard lock(oneLineAtATime);
    sink()(line);
}

bool diagnosticsAreOn() {
    return static_cast<bool>(sink());
}

void setDiagnosticSink(DiagnosticSink newSink) {
    sink() = std::move(newSink);
}

} // namespace corvane
