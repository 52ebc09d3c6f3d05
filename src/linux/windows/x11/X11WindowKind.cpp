#include "linux/windows/x11/X11WindowKind.h"

namespace corvane::x11 {

WindowKind kindOf(const Property& types, const Atoms& atoms) {
    // The first type that is known counts, as toolkits put their own in front.
    for (const auto type : types.numbers()) {
        if (type == atoms.typeNormal || type == atoms.typeDialog) return WindowKind::ordinary;
        if (type == atoms.typeDock) return WindowKind::dock;
        if (type == atoms.typeDesktop) return WindowKind::desktop;
        for (const auto other : {atoms.typeToolbar, atoms.typeMenu, atoms.typeUtility,
                                 atoms.typeSplash, atoms.typeNotification}) {
            if (type == other) return WindowKind::other;
        }
    }
    return WindowKind::ordinary;
}

} // namespace corvane::x11
