#include "linux/windows/kwin/OutputOrder.h"

#include "linux/windows/WaylandConnection.h"
#include "linux/windows/kwin/OutputOrderProtocol.h"

#include <algorithm>
#include <list>
#include <string_view>

#include <wayland-client.h>

namespace corvane::kwin {
namespace {

struct Output {
    wl_output* proxy;
    std::string name = {};
    PixelPoint origin = {};
};

/// What KWin says of its outputs.
struct Outputs {
    static Outputs& of(void* data) { return *static_cast<Outputs*>(data); }

    static void offer(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                      std::uint32_t version) {
        constexpr std::uint32_t tellsName = 4;
        auto& self = of(data);
        const std::string_view offered(interface);
        const auto bind = [&](const wl_interface& wanted, std::uint32_t exactly) {
            return wl_registry_bind(registry, name, &wanted, exactly);
        };
        if (offered == wl_output_interface.name && version >= tellsName) {
            auto* const output = static_cast<wl_output*>(bind(wl_output_interface, tellsName));
            wl_output_add_listener(output, &ofOutput, &self.all.emplace_back(Output{output}));
        }
        if (offered == kde_output_order_v1_interface.name && !self.order) {
            self.order = static_cast<kde_output_order_v1*>(bind(kde_output_order_v1_interface, 1));
            kde_output_order_v1_add_listener(self.order, &ofOrder, data);
        }
    }
    static void place(void* data, wl_output*, std::int32_t x, std::int32_t y, std::int32_t,
                      std::int32_t, std::int32_t, const char*, const char*, std::int32_t) {
        static_cast<Output*>(data)->origin = {double(x), double(y)};
    }
    static void call(void* data, wl_output*, const char* name) {
        static_cast<Output*>(data)->name = name;
    }
    static void putNext(void* data, kde_output_order_v1*, const char* name) {
        if (of(data).first.empty()) of(data).first = name;
    }

    static constexpr wl_registry_listener ofRegistry{offer,
                                                     [](void*, wl_registry*, std::uint32_t) {}};
    static constexpr wl_output_listener ofOutput{
        place,
        [](void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
        [](void*, wl_output*) {},
        [](void*, wl_output*, std::int32_t) {},
        call,
        [](void*, wl_output*, const char*) {}};
    static constexpr kde_output_order_v1_listener ofOrder{putNext,
                                                          [](void*, kde_output_order_v1*) {}};

    ~Outputs() {
        for (const auto& output : all)
            wl_output_destroy(output.proxy);
        if (order) kde_output_order_v1_destroy(order);
        if (registry) wl_registry_destroy(registry);
    }

    wl_registry* registry = nullptr;
    kde_output_order_v1* order = nullptr;
    std::list<Output> all;
    std::string first;
};

} // namespace

std::optional<PixelPoint> primaryOrigin(Deadline by) {
    WaylandConnection connection;
    if (!connection.display()) return std::nullopt;
    Outputs outputs;
    outputs.registry = wl_display_get_registry(connection.display());
    wl_registry_add_listener(outputs.registry, &Outputs::ofRegistry, &outputs);
    // What is offered, and then what that tells.
    if (!connection.renew(by) || !outputs.order || !connection.renew(by)) return std::nullopt;
    const auto found = std::ranges::find(outputs.all, outputs.first, &Output::name);
    return found == outputs.all.end() ? std::nullopt : std::optional(found->origin);
}

} // namespace corvane::kwin
