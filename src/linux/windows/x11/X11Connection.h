#pragma once

#include "linux/windows/WindowSystem.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/types.h>
#include <xcb/xcb.h>

/// The X server, asked so that nothing but `Server::open` outlasts its deadline. Of one thread at a
/// time.
namespace corvane::x11 {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

/// Known by the server when the connection opens.
struct Atoms {
    xcb_atom_t netClientList = 0;
    xcb_atom_t netClientListStacking = 0;
    xcb_atom_t netSupportingWmCheck = 0;
    xcb_atom_t netActiveWindow = 0;
    xcb_atom_t netCloseWindow = 0;
    xcb_atom_t wmProtocols = 0;
    xcb_atom_t wmDeleteWindow = 0;
    xcb_atom_t netWmWindowType = 0;
    xcb_atom_t typeNormal = 0;
    xcb_atom_t typeDialog = 0;
    xcb_atom_t typeDesktop = 0;
    xcb_atom_t typeDock = 0;
    xcb_atom_t typeToolbar = 0;
    xcb_atom_t typeMenu = 0;
    xcb_atom_t typeUtility = 0;
    xcb_atom_t typeSplash = 0;
    xcb_atom_t typeNotification = 0;
    xcb_atom_t netWmState = 0;
    xcb_atom_t stateHidden = 0;
    xcb_atom_t stateSkipTaskbar = 0;
    xcb_atom_t wmState = 0;
    xcb_atom_t gtkApplicationId = 0;
    xcb_atom_t bamfDesktopFile = 0;
    xcb_atom_t kdeDesktopFile = 0;
    xcb_atom_t netCurrentDesktop = 0;
    xcb_atom_t netWorkarea = 0;
    xcb_atom_t netWmDesktop = 0;
    xcb_atom_t netWmName = 0;
    xcb_atom_t utf8String = 0;
    xcb_atom_t netWmStrut = 0;
    xcb_atom_t netWmStrutPartial = 0;
    xcb_atom_t netFrameExtents = 0;
    xcb_atom_t netRequestFrameExtents = 0;
    xcb_atom_t gtkFrameExtents = 0;
    xcb_atom_t netMoveresizeWindow = 0;
    xcb_atom_t stateFullscreen = 0;
    xcb_atom_t stateMaximizedHorz = 0;
    xcb_atom_t stateMaximizedVert = 0;
    xcb_atom_t stateShaded = 0;
    xcb_atom_t stateAbove = 0;
    xcb_atom_t stateBelow = 0;
    xcb_atom_t netStartupInfoBegin = 0;
    xcb_atom_t netStartupInfo = 0;
};

/// A window's property; empty where it is absent.
struct Property {
    xcb_atom_t type = XCB_NONE;
    int format = 0;
    std::string bytes = {};
    bool windowIsGone = false;

    bool exists() const { return type != XCB_NONE; }
    /// The values of a property of 32-bit ones; none for another format.
    std::vector<std::uint32_t> numbers() const;
    std::optional<std::uint32_t> firstNumber() const;
    /// The texts between zero bytes; none for another format.
    std::vector<std::string> texts() const;
    /// The first text, or nothing at all.
    std::string text() const;
};

/// An open connection.
class Server {
public:
    /// Opens the display that the environment names; null where that fails. Waits for the server
    /// without a limit.
    static std::unique_ptr<Server> open();

    xcb_connection_t* get() const { return connection_.get(); }
    xcb_window_t root() const { return root_; }
    /// The number of the display's screen that this root is of.
    int screen() const { return screen_; }
    const Atoms& atoms() const { return atoms_; }
    /// It tells the processes of its clients, and by the numbers that they have here: it runs on
    /// this machine and in this process space.
    bool tellsProcesses() const { return tellsProcesses_; }
    /// Of the process that listens for clients; 0 for a server of another machine or space.
    pid_t processIdentifier() const { return process_; }
    /// It shows the X11 clients of a Wayland session.
    bool isXwayland() const { return isXwayland_; }
    /// The extension that tells the monitors is there.
    bool tellsMonitors() const { return tellsMonitors_; }
    /// What of a window's id tells its client.
    std::uint32_t clientOf(xcb_window_t window) const { return window & ~idMask_; }

    /// Sends a request for at most `longest` times four bytes of a property.
    xcb_get_property_cookie_t requestProperty(xcb_window_t window, xcb_atom_t atom,
                                              std::uint32_t longest = 1024) const;
    Property property(xcb_get_property_cookie_t cookie, Deadline deadline);

    /// Sends a message about a window to the window manager, or to the window's own client.
    enum class Recipient { windowManager, client };
    using Message = std::array<std::uint32_t, 5>;
    void sendMessage(Recipient recipient, xcb_window_t window, xcb_atom_t type,
                     const Message& message);
    /// Waits until the server has done all that was asked of it; false where it doesn't in time.
    bool finish(Deadline deadline);

    /// The reply to a request whose errors are answers too; null for an error and for one that
    /// doesn't come in time.
    template <typename T, typename Cookie>
    Reply<T> reply(Cookie cookie, Deadline deadline) {
        return Reply<T>(static_cast<T*>(waitForReply(cookie.sequence, deadline)));
    }

    /// The next event or late error; null where none comes in time.
    Reply<xcb_generic_event_t> event(Deadline deadline);

    /// Takes events and late errors, which no one waits for, off the queue.
    void dropEvents();
    /// The connection broke or the server was too late: what was read since can't be trusted.
    bool failed() const { return late_ || xcb_connection_has_error(get()) != 0; }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    Server() = default;
    void* waitForReply(unsigned sequence, Deadline deadline);
    void waitForInput(std::chrono::milliseconds longest) const;
    bool prepare(int screen);

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t root_ = XCB_NONE;
    int screen_ = 0;
    std::uint32_t idMask_ = 0;
    pid_t process_ = 0;
    Atoms atoms_;
    bool tellsProcesses_ = false;
    bool isXwayland_ = false;
    bool tellsMonitors_ = false;
    bool late_ = false;
};

/// Opens a server when first needed, and again after it failed.
class Connection {
public:
    /// Null where there is no display or it can't be opened by then.
    Server* server(Deadline deadline);

    /// What `question` makes of the server's answers. It is put a second time where the first
    /// attempt shows that an old connection is broken; nothing where there is no answer by then.
    template <typename Question>
    auto answer(Deadline deadline, Question&& question)
        -> std::optional<decltype(question(std::declval<Server&>()))> {
        for (int attempt = 0; attempt < 2; ++attempt) {
            Server* const current = server(deadline);
            if (!current) break;
            auto result = question(*current);
            if (!current->failed()) return result;
        }
        return std::nullopt;
    }

private:
    std::unique_ptr<Server> server_;
    std::future<std::unique_ptr<Server>> opening_;
};

} // namespace corvane::x11
