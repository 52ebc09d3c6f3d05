#include "launch/LaunchAlerts.h"

#include "foundation/Text.h"
#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

namespace {

constexpr int mostOfAStart = 5;

/// "Access Error: Failed to access 'a'."
std::string lineOf(const Alert& alert) {
    constexpr std::size_t mostCharacters = 200;
    const auto firstParagraph = alert.message.substr(0, alert.message.find("\n\n"));
    return text::onOneLine(alert.title + ": " + firstParagraph, mostCharacters);
}

Alert listOf(const std::vector<std::string>& lines) {
    // As long as somebody may want to read, and as fast to draw.
    constexpr std::size_t mostLines = 100;
    std::string list;
    for (std::size_t i = 0; i < lines.size() && i < mostLines; ++i)
        list += (i > 0 ? "\n• " : "• ") + lines[i];
    if (lines.size() > mostLines)
        list += "\n\nand " + std::to_string(lines.size() - mostLines) + " more";
    return {.title = "And " + std::to_string(lines.size()) + " More",
            .message = std::move(list),
            .buttons = {"OK"}};
}

} // namespace

void LaunchAlerts::beginStart() {
    // Behind those of the start before it.
    mainQueue_.async([self = shared_from_this()] { self->left_ = mostOfAStart; });
}

void LaunchAlerts::show(Alert alert, std::function<void(int response)> handler) {
    mainQueue_.async([self = shared_from_this(), alert = std::move(alert),
                      handler = std::move(handler)] { self->present(alert, handler); });
}

void LaunchAlerts::present(const Alert& alert, const std::function<void(int response)>& handler) {
    if (!left_ || *left_ > 0) {
        if (left_) --*left_;
        return ask(alert, [handler](AlertResponse response) { handler(response.button); });
    }
    others_.push_back(lineOf(alert));
    if (std::exchange(othersAreComing_, true)) return;
    // By then all that is due already has come.
    mainQueue_.async([self = shared_from_this()] { self->showOthers(); });
}

void LaunchAlerts::showOthers() {
    ask(listOf(std::exchange(others_, {})), [self = shared_from_this()](AlertResponse) {
        self->othersAreComing_ = !self->others_.empty();
        if (self->othersAreComing_) self->mainQueue_.async([self] { self->showOthers(); });
    });
}

void LaunchAlerts::ask(const Alert& alert, const std::function<void(AlertResponse)>& answered) {
    if (!alerts_.beginSheet(alert, answered)) answered(alerts_.runModal(alert));
}

} // namespace corvane
