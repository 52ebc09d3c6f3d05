#include "linux/windows/x11/X11Launches.h"

#include <algorithm>
#include <atomic>

#include <unistd.h>

namespace corvane::x11 {
namespace {

/// A window that is never shown, for as long as something is told in its name.
class Teller {
public:
    explicit Teller(Server& server) : server_(server), window_(xcb_generate_id(server.get())) {
        const std::uint32_t values[]{1, XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(server.get(), XCB_COPY_FROM_PARENT, window_, server.root(), -1, -1, 1, 1,
                          0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    }
    ~Teller() {
        xcb_destroy_window(server_.get(), window_);
        xcb_flush(server_.get());
    }
    Teller(const Teller&) = delete;

    /// The server tells its time only with a change. Nothing where it doesn't answer.
    std::optional<xcb_timestamp_t> serverTime(Deadline deadline) {
        xcb_change_property(server_.get(), XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME,
                            XCB_ATOM_STRING, 8, 0, nullptr);
        while (const auto event = server_.event(deadline)) {
            if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) continue;
            const auto& change = reinterpret_cast<xcb_property_notify_event_t&>(*event);
            if (change.window == window_) return change.time;
        }
        return std::nullopt;
    }
    /// To all that listen at the root window, in pieces; the last one ends with a zero.
    void tell(const std::string& message) {
        xcb_client_message_event_t event{};
        constexpr std::size_t piece = sizeof event.data.data8;
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 8;
        event.window = window_;
        event.type = server_.atoms().netStartupInfoBegin;
        for (std::size_t at = 0; at <= message.size(); at += piece) {
            std::ranges::fill(event.data.data8, 0);
            message.copy(reinterpret_cast<char*>(event.data.data8), piece, at);
            xcb_send_event(server_.get(), 0, server_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                           reinterpret_cast<const char*>(&event));
            event.type = server_.atoms().netStartupInfo;
        }
    }

private:
    Server& server_;
    const xcb_window_t window_;
};

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

/// Unlike any other of this display.
std::string tokenAt(xcb_timestamp_t time) {
    static std::atomic<int> launches = 0;
    return "corvane-" + std::to_string(::getpid()) + "-" + std::to_string(++launches) + "_TIME" +
           std::to_string(time);
}

} // namespace

std::string beginLaunch(Server& server, const Launch& launch, Deadline deadline) {
    Teller teller(server);
    const auto time = teller.serverTime(deadline);
    if (!time) return {};
    const auto token = tokenAt(*time);
    teller.tell("new: ID=" + quoted(token) + " NAME=" + quoted(launch.name) + " SCREEN=" +
                std::to_string(server.screen()) + " APPLICATION_ID=" + quoted(launch.desktopId));
    return token;
}

void endLaunch(Server& server, const std::string& token) {
    Teller(server).tell("remove: ID=" + quoted(token));
}

} // namespace corvane::x11
