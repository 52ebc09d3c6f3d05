#include "qt/items/Symbols.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace corvane {

namespace {

struct Symbol {
    std::string_view name;
    char16_t glyph;
};

constexpr char16_t neutralGlyph = u'\ue3c6';

/// In the order of the names, since they are searched by halves.
constexpr Symbol symbols[]{
    {"app", u'\ue5c3'},
    {"app.badge", u'\ue8b9'},
    {"app.badge.checkmark", u'\uef76'},
    {"app.icon", u'\ue5c3'},
    {"arrow.clockwise", u'\ue5d5'},
    {"bolt.fill", u'\uea0b'},
    {"book", u'\uea19'},
    {"briefcase", u'\ueb3f'},
    {"building", u'\uea40'},
    {"camera", u'\ue412'},
    {"car", u'\ue531'},
    {"cart", u'\ue8cc'},
    {"chart.bar", u'\ue26b'},
    {"checkmark", u'\ue5ca'},
    {"checkmark.circle", u'\ue92d'},
    {"checkmark.circle.fill", u'\ue86c'},
    {"chevron.down", u'\ue5cf'},
    {"chevron.right", u'\ue5cc'},
    {"chevron.up", u'\ue5ce'},
    {"clock", u'\ue8b5'},
    {"cloud", u'\ue2bd'},
    {"code", u'\ue86f'},
    {"crown", u'\ue7af'},
    {"cube", u'\ue9fe'},
    {"curlybraces", u'\uead3'},
    {"desktopcomputer", u'\ue30c'},
    {"diamond", u'\uead5'},
    {"doc", u'\ue24d'},
    {"doc.fill", u'\ue873'},
    {"dots.grip", u'\ue945'},
    {"ellipsis", u'\ue5d3'},
    {"envelope", u'\ue158'},
    {"exclamationmark.bubble", u'\ue626'},
    {"exclamationmark.triangle", u'\uf083'},
    {"exclamationmark.triangle.fill", u'\ue002'},
    {"externaldrive", u'\ue1db'},
    {"eye", u'\ue8f4'},
    {"faceid", u'\ue87c'},
    {"flag", u'\ue153'},
    {"flame", u'\uef55'},
    {"folder", u'\ue2c8'},
    {"folder.badge.gearshape", u'\uf1c7'},
    {"folder.badge.plus", u'\ue2cc'},
    {"folder.fill", u'\ue2c7'},
    {"gamecontroller", u'\uea28'},
    {"gear", u'\ue8b8'},
    {"gearshape.fill", u'\ue8b8'},
    {"globe", u'\ue80b'},
    {"hammer", u'\uea59'},
    {"headphones", u'\uf01f'},
    {"heart", u'\ue87d'},
    {"house", u'\ue88a'},
    {"info.circle", u'\ue88f'},
    {"ipad", u'\ue331'},
    {"iphone", u'\ue325'},
    {"key", u'\ue0da'},
    {"laptopcomputer", u'\ue31e'},
    {"leaf", u'\uea35'},
    {"lightbulb", u'\ue0f0'},
    {"line.3.horizontal", u'\ue5d2'},
    {"lock", u'\ue897'},
    {"macbook", u'\ue320'},
    {"magnifyingglass", u'\ue8b6'},
    {"map", u'\ue55b'},
    {"medal", u'\uea3f'},
    {"megaphone", u'\uef49'},
    {"minus", u'\ue15b'},
    {"moon.fill", u'\ue51c'},
    {"music.note", u'\ue405'},
    {"paintbrush", u'\ue3ae'},
    {"pencil", u'\ue3c9'},
    {"person", u'\ue7fd'},
    {"phone", u'\ue0cd'},
    {"photo", u'\ue3f4'},
    {"play", u'\ue037'},
    {"play.circle", u'\ue039'},
    {"play.fill", u'\ue037'},
    {"plus", u'\ue145'},
    {"plus.circle", u'\ue148'},
    {"plus.circle.fill", u'\ue147'},
    {"power", u'\ue8ac'},
    {"questionmark", u'\ueb8b'},
    {"rectangle.3.group", u'\ue871'},
    {"rectangle.dock", u'\ue06c'},
    {"rectangle.expand.vertical", u'\ue5d7'},
    {"rectangle.on.rectangle", u'\ue3e0'},
    {"rocket", u'\ueb9b'},
    {"scissors", u'\ue14e'},
    {"scope", u'\ue3b4'},
    {"server.rack", u'\ue875'},
    {"shield", u'\ue9e0'},
    {"sparkles", u'\ue65f'},
    {"square.and.arrow.down", u'\ue2c4'},
    {"square.and.arrow.down.on.square", u'\ue8d7'},
    {"square.and.arrow.up", u'\ue2c6'},
    {"square.grid.2x2", u'\ue9b0'},
    {"star", u'\ue838'},
    {"stop.fill", u'\ue047'},
    {"sun.max", u'\ue518'},
    {"sun.max.fill", u'\ue518'},
    {"target", u'\ue8e1'},
    {"terminal", u'\ueb8e'},
    {"terminal.fill", u'\ueb8e'},
    {"theatermasks", u'\uea66'},
    {"trash", u'\ue872'},
    {"trophy", u'\uea23'},
    {"wand.and.stars", u'\ue663'},
    {"wrench", u'\ue869'},
    {"wrench.and.screwdriver", u'\uf10b'},
    {"xmark", u'\ue5cd'},
    {"xmark.circle", u'\ue888'},
};

static_assert(std::ranges::is_sorted(symbols, {}, &Symbol::name), "a line isn't in its place");

const Symbol* find(const QString& name) {
    const auto wanted = name.toStdString();
    const auto* found =
        std::ranges::lower_bound(symbols, std::string_view(wanted), {}, &Symbol::name);
    return found != std::end(symbols) && found->name == wanted ? found : nullptr;
}

} // namespace

QString Symbols::glyph(const QString& name) {
    const auto* symbol = find(name);
    return QString(QChar(symbol ? symbol->glyph : neutralGlyph));
}

bool Symbols::isKnown(const QString& name) {
    return find(name) != nullptr;
}

} // namespace corvane
