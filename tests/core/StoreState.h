#pragma once

#include "core/WorkspaceStore.h"

#include <type_traits>

namespace corvane {

/// Puts a store into a state that only the store itself can reach otherwise.
struct StoreState {
    template <typename T>
    static void set(WorkspaceStore::Field<T>& field, std::type_identity_t<T> value) {
        field = std::move(value);
    }
    template <typename T, typename Change>
    static void change(WorkspaceStore::Field<T>& field, Change&& change) {
        field.mutate(std::forward<Change>(change));
    }
};

} // namespace corvane
