#include "fuzz/Fuzz.h"
#include "linux/scripts/MdfindQuery.h"

/// A name that is read is one that can be asked for again.
void feed(std::string_view text) {
    const auto name = corvane::parseApplicationNameQuery(text);
    if (!name) return;
    std::string quoted;
    for (const char c : *name) {
        if (c == '\\' || c == '\'') quoted += '\\';
        quoted += c;
    }
    const auto query = "kMDItemKind == 'Application' && kMDItemDisplayName == '" + quoted + "'";
    expect(corvane::parseApplicationNameQuery(query) == name);
}
