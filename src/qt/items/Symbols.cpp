#include "qt/items/Symbols.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

struct Symbol {
    QLatin1StringView name;
    char16_t glyph;
};

constexpr char16_t neutralGlyph = u'\ue3c6';

/// In the order of the names.
constexpr Symbol symbols[]{
    {QLatin1StringView("app"), u'\ue5c3'},
    {QLatin1StringView("app.badge"), u'\ue8b9'},
    {QLatin1StringView("app.badge.checkmark"), u'\uef76'},
    {QLatin1StringView("app.icon"), u'\ue5c3'},
    {QLatin1StringView("arrow.clockwise"), u'\ue5d5'},
    {QLatin1StringView("bolt.fill"), u'\uea0b'},
    {QLatin1StringView("book"), u'\uea19'},
    {QLatin1StringView("briefcase"), u'\ueb3f'},
    {QLatin1StringView("building"), u'\uea40'},
    {QLatin1StringView("camera"), u'\ue412'},
    {QLatin1StringView("car"), u'\ue531'},
    {QLatin1StringView("cart"), u'\ue8cc'},
    {QLatin1StringView("chart.bar"), u'\ue26b'},
    {QLatin1StringView("checkmark"), u'\ue5ca'},
    {QLatin1StringView("checkmark.circle"), u'\ue92d'},
    {QLatin1StringView("checkmark.circle.fill"), u'\ue86c'},
    {QLatin1StringView("chevron.down"), u'\ue5cf'},
    {QLatin1StringView("chevron.right"), u'\ue5cc'},
    {QLatin1StringView("chevron.up"), u'\ue5ce'},
    {QLatin1StringView("clock"), u'\ue8b5'},
    {QLatin1StringView("cloud"), u'\ue2bd'},
    {QLatin1StringView("code"), u'\ue86f'},
    {QLatin1StringView("crown"), u'\ue7af'},
    {QLatin1StringView("cube"), u'\ue9fe'},
    {QLatin1StringView("curlybraces"), u'\uead3'},
    {QLatin1StringView("desktopcomputer"), u'\ue30c'},
    {QLatin1StringView("diamond"), u'\uead5'},
    {QLatin1StringView("doc"), u'\ue24d'},
    {QLatin1StringView("doc.fill"), u'\ue873'},
    {QLatin1StringView("ellipsis"), u'\ue5d3'},
    {QLatin1StringView("envelope"), u'\ue158'},
    {QLatin1StringView("exclamationmark.bubble"), u'\ue626'},
    {QLatin1StringView("exclamationmark.triangle"), u'\uf083'},
    {QLatin1StringView("exclamationmark.triangle.fill"), u'\ue002'},
    {QLatin1StringView("externaldrive"), u'\ue1db'},
    {QLatin1StringView("eye"), u'\ue8f4'},
    {QLatin1StringView("faceid"), u'\ue87c'},
    {QLatin1StringView("flag"), u'\ue153'},
    {QLatin1StringView("flame"), u'\uef55'},
    {QLatin1StringView("folder"), u'\ue2c8'},
    {QLatin1StringView("folder.badge.gearshape"), u'\uf1c7'},
    {QLatin1StringView("folder.badge.plus"), u'\ue2cc'},
    {QLatin1StringView("folder.fill"), u'\ue2c7'},
    {QLatin1StringView("gamecontroller"), u'\uea28'},
    {QLatin1StringView("gear"), u'\ue8b8'},
    {QLatin1StringView("gearshape.fill"), u'\ue8b8'},
    {QLatin1StringView("globe"), u'\ue80b'},
    {QLatin1StringView("hammer"), u'\uea59'},
    {QLatin1StringView("headphones"), u'\uf01f'},
    {QLatin1StringView("heart"), u'\ue87d'},
    {QLatin1StringView("house"), u'\ue88a'},
    {QLatin1StringView("info.circle"), u'\ue88f'},
    {QLatin1StringView("ipad"), u'\ue331'},
    {QLatin1StringView("iphone"), u'\ue325'},
    {QLatin1StringView("key"), u'\ue0da'},
    {QLatin1StringView("laptopcomputer"), u'\ue31e'},
    {QLatin1StringView("leaf"), u'\uea35'},
    {QLatin1StringView("lightbulb"), u'\ue0f0'},
    {QLatin1StringView("line.3.horizontal"), u'\ue5d2'},
    {QLatin1StringView("lock"), u'\ue897'},
    {QLatin1StringView("macbook"), u'\ue320'},
    {QLatin1StringView("magnifyingglass"), u'\ue8b6'},
    {QLatin1StringView("map"), u'\ue55b'},
    {QLatin1StringView("medal"), u'\uea3f'},
    {QLatin1StringView("megaphone"), u'\uef49'},
    {QLatin1StringView("minus"), u'\ue15b'},
    {QLatin1StringView("moon.fill"), u'\ue51c'},
    {QLatin1StringView("music.note"), u'\ue405'},
    {QLatin1StringView("paintbrush"), u'\ue3ae'},
    {QLatin1StringView("pencil"), u'\ue3c9'},
    {QLatin1StringView("person"), u'\ue7fd'},
    {QLatin1StringView("phone"), u'\ue0cd'},
    {QLatin1StringView("photo"), u'\ue3f4'},
    {QLatin1StringView("play"), u'\ue037'},
    {QLatin1StringView("play.circle"), u'\ue039'},
    {QLatin1StringView("play.fill"), u'\ue037'},
    {QLatin1StringView("plus"), u'\ue145'},
    {QLatin1StringView("plus.circle"), u'\ue148'},
    {QLatin1StringView("plus.circle.fill"), u'\ue147'},
    {QLatin1StringView("power"), u'\ue8ac'},
    {QLatin1StringView("questionmark"), u'\ueb8b'},
    {QLatin1StringView("rectangle.3.group"), u'\ue871'},
    {QLatin1StringView("rectangle.dock"), u'\ue06c'},
    {QLatin1StringView("rectangle.expand.vertical"), u'\ue5d7'},
    {QLatin1StringView("rectangle.on.rectangle"), u'\ue3e0'},
    {QLatin1StringView("rocket"), u'\ueb9b'},
    {QLatin1StringView("scissors"), u'\ue14e'},
    {QLatin1StringView("scope"), u'\ue3b4'},
    {QLatin1StringView("server.rack"), u'\ue875'},
    {QLatin1StringView("shield"), u'\ue9e0'},
    {QLatin1StringView("sparkles"), u'\ue65f'},
    {QLatin1StringView("square.and.arrow.down"), u'\ue2c4'},
    {QLatin1StringView("square.and.arrow.down.on.square"), u'\ue8d7'},
    {QLatin1StringView("square.and.arrow.up"), u'\ue2c6'},
    {QLatin1StringView("square.grid.2x2"), u'\ue9b0'},
    {QLatin1StringView("star"), u'\ue838'},
    {QLatin1StringView("stop.fill"), u'\ue047'},
    {QLatin1StringView("sun.max"), u'\ue518'},
    {QLatin1StringView("sun.max.fill"), u'\ue518'},
    {QLatin1StringView("target"), u'\ue8e1'},
    {QLatin1StringView("terminal"), u'\ueb8e'},
    {QLatin1StringView("terminal.fill"), u'\ueb8e'},
    {QLatin1StringView("theatermasks"), u'\uea66'},
    {QLatin1StringView("trash"), u'\ue872'},
    {QLatin1StringView("trophy"), u'\uea23'},
    {QLatin1StringView("wand.and.stars"), u'\ue663'},
    {QLatin1StringView("wrench"), u'\ue869'},
    {QLatin1StringView("wrench.and.screwdriver"), u'\uf10b'},
    {QLatin1StringView("xmark"), u'\ue5cd'},
    {QLatin1StringView("xmark.circle"), u'\ue888'},
};

const Symbol* find(const QString& name) {
    const auto* found = std::lower_bound(
        std::begin(symbols), std::end(symbols), name,
        [](const Symbol& symbol, const QString& wanted) { return symbol.name < wanted; });
    return found != std::end(symbols) && found->name == name ? found : nullptr;
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
