#include "desktop/harness/XSessionManager.h"

#include "desktop/harness/Process.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include <poll.h>

extern "C" int _IceTransNoListen(const char* protocol);

namespace corvane::desktop {

namespace {

XSessionManager* self(SmPointer data) {
    return static_cast<XSessionManager*>(data);
}

Bool everyoneIsLetIn(char*) {
    return True;
}

} // namespace

XSessionManager::XSessionManager() {
    // The usual one ends the process with the first program that goes.
    IceSetIOErrorHandler([](IceConn) {});
    _IceTransNoListen("tcp");
    char error[256] = "";
    if (!SmsInitialize("Test", "1", add, this, everyoneIsLetIn, sizeof error, error) ||
        !IceListenForConnections(&listenerCount_, &listeners_, sizeof error, error))
        throw std::runtime_error(error);
    for (int i = 0; i < listenerCount_; ++i)
        IceSetHostBasedAuthProc(listeners_[i], everyoneIsLetIn);
    char* address = IceComposeNetworkIdList(listenerCount_, listeners_);
    address_ = address;
    std::free(address);
    thread_ = std::thread([this] { serve(); });
}

XSessionManager::~XSessionManager() {
    isEnding_ = true;
    thread_.join();
    while (!connections_.empty())
        remove(connections_.back());
    IceFreeListenObjs(listenerCount_, listeners_);
}

Status XSessionManager::add(SmsConn connection, SmPointer data, unsigned long* mask,
                            SmsCallbacks* callbacks, char**) {
    self(data)->clients_.push_back({connection});
    *mask = (SmsGetPropertiesProcMask << 1) - 1;
    *callbacks = XSessionManager::callbacks(self(data));
    return 1;
}

SmsCallbacks XSessionManager::callbacks(XSessionManager* self) {
    SmsCallbacks calls{};
    calls.register_client = {[](SmsConn client, SmPointer, char* previous) -> Status {
                                 char* name = previous ? previous : SmsGenerateClientID(client);
                                 SmsRegisterClientReply(client, name);
                                 std::free(name);
                                 if (!previous)
                                     SmsSaveYourself(client, SmSaveLocal, False,
                                                     SmInteractStyleNone, False);
                                 return 1;
                             },
                             self};
    calls.interact_request = {[](SmsConn client, SmPointer, int) { SmsInteract(client); }, self};
    calls.interact_done = {[](SmsConn, SmPointer, Bool) {}, self};
    calls.save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, self};
    calls.save_yourself_phase2_request = {
        [](SmsConn client, SmPointer) { SmsSaveYourselfPhase2(client); }, self};
    calls.save_yourself_done = {
        [](SmsConn client, SmPointer data, Bool) { desktop::self(data)->answered(client); }, self};
    calls.close_connection = {[](SmsConn client, SmPointer data, int count, char** reasons) {
                                  SmFreeReasons(count, reasons);
                                  desktop::self(data)->remove(SmsGetIceConnection(client));
                              },
                              self};
    calls.set_properties = {[](SmsConn, SmPointer, int count, SmProp** properties) {
                                std::for_each_n(properties, count, SmFreeProperty);
                                std::free(static_cast<void*>(properties));
                            },
                            self};
    calls.delete_properties = {
        [](SmsConn, SmPointer, int count, char** names) { SmFreeReasons(count, names); }, self};
    calls.get_properties = {
        [](SmsConn client, SmPointer) { SmsReturnProperties(client, 0, nullptr); }, self};
    return calls;
}

/// The first question isn't one of `asks`: each program is put it when it comes.
void XSessionManager::answered(SmsConn connection) {
    for (auto& client : clients_) {
        if (client.connection != connection) continue;
        if (!client.isAsked) SmsSaveComplete(connection);
        client.isAsked = false;
    }
}

void XSessionManager::remove(IceConn connection) {
    std::erase_if(clients_, [&](const auto& client) {
        const bool isOf = SmsGetIceConnection(client.connection) == connection;
        if (isOf) SmsCleanUp(client.connection);
        return isOf;
    });
    std::erase(connections_, connection);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
}

bool XSessionManager::asks() {
    {
        const std::lock_guard lock(mutex_);
        if (clients_.empty()) return false;
        for (auto& client : clients_) {
            client.isAsked = true;
            SmsSaveYourself(client.connection, SmSaveBoth, True, SmInteractStyleAny, False);
        }
    }
    return comesTrue([&] {
        const std::lock_guard lock(mutex_);
        return std::ranges::none_of(clients_, &Client::isAsked);
    });
}

void XSessionManager::goesOn() {
    const std::lock_guard lock(mutex_);
    for (const auto& client : clients_)
        SmsShutdownCancelled(client.connection);
}

void XSessionManager::ends() {
    const std::lock_guard lock(mutex_);
    for (const auto& client : clients_)
        SmsDie(client.connection);
}

void XSessionManager::serve() {
    const auto hasInput = [](int descriptor) {
        pollfd file{descriptor, POLLIN, 0};
        return poll(&file, 1, 0) > 0;
    };
    while (!isEnding_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        const std::lock_guard lock(mutex_);
        // What is taken may close any of them.
        for (auto* connection : std::vector(connections_)) {
            if (std::ranges::count(connections_, connection) == 0) continue;
            if (!hasInput(IceConnectionNumber(connection))) continue;
            const auto status = IceProcessMessages(connection, nullptr, nullptr);
            if (status == IceProcessMessagesIOError) remove(connection);
        }
        for (int i = 0; i < listenerCount_; ++i) {
            IceAcceptStatus status{};
            if (!hasInput(IceGetListenConnectionNumber(listeners_[i]))) continue;
            auto* connection = IceAcceptConnection(listeners_[i], &status);
            if (connection) connections_.push_back(connection);
        }
    }
}

} // namespace corvane::desktop
