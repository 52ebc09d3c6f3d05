#include "foundation/PropertyList.h"

#include <limits>

#include <gtest/gtest.h>

using namespace corvane;

namespace {

/// A binary list of 2-byte tables, with a text of objects that stand ready encoded.
std::string binaryList(const std::vector<std::string>& objects, std::size_t root = 0) {
    const auto bigEndian = [](std::size_t number, int size) {
        std::string text;
        while (size-- > 0)
            text += static_cast<char>(number >> 8 * size);
        return text;
    };
    std::string list = "bplist00";
    std::string table;
    for (const auto& object : objects) {
        table += bigEndian(list.size(), 4);
        list += object;
    }
    const auto tableStart = list.size();
    return list + table + bigEndian(0x0402, 8) + bigEndian(objects.size(), 8) + bigEndian(root, 8) +
           bigEndian(tableStart, 8);
}

/// An array or a dictionary ("\xd1") with references to the objects.
std::string container(char marker, std::initializer_list<std::size_t> references) {
    std::string object(1, marker);
    for (const auto reference : references)
        object += {static_cast<char>(reference >> 8), static_cast<char>(reference)};
    return object;
}

TEST(PropertyList, survivesARoundTripInTheBinaryFormat) {
    using Limits = std::numeric_limits<std::int64_t>;
    const PropertyList::Dictionary entries{
        {"flag", {true}},
        {"numbers",
         {PropertyList::Array{{std::int64_t{-1}},
                              {std::int64_t{255}},
                              {std::int64_t{256}},
                              {std::int64_t{1} << 32},
                              {Limits::min()},
                              {Limits::max()}}}},
        {"fractions", {PropertyList::Array{{0.1}, {-1e300}, {0.0}}}},
        {"Größe 📚", {std::string("Ünïcode 📚")}},
        {std::string("null\0character", 14), {std::string("a\0b", 3)}},
        {"data", {Bytes{0, 1, 255}}},
        {"much data", {Bytes(70'000, 7)}},
        {"long text", {std::string(300, 'x')}},
        {"empty", {PropertyList::Array{}}},
        {"nested", {PropertyList::Array{{PropertyList::Dictionary{}}, {Bytes{}}}}}};
    // The tables grow with the number of objects and with the size of the list.
    for (const std::size_t more : {0, 20, 300, 70'000}) {
        PropertyList list{entries};
        std::get<PropertyList::Dictionary>(list.value)["more"] = {
            PropertyList::Array(more, PropertyList{std::string("x")})};
        const auto bytes = list.toBinary();
        EXPECT_TRUE(bytes.starts_with("bplist00"));
        const auto read = PropertyList::parse(bytes);
        ASSERT_TRUE(read) << more;
        EXPECT_TRUE(*read == list) << more;
    }
}

TEST(PropertyList, hasTheNumbersOfOtherWriters) {
    const std::pair<std::string, PropertyList> cases[]{
        {std::string("\x22\x3f\xc0\0\0", 5), {1.5}},
        {"\x10\xff", {std::int64_t{255}}},
        {"\x14" + std::string(15, '\0') + "\x07", {std::int64_t{7}}},
        {"\x14" + std::string(16, '\xff'), {std::int64_t{-1}}}};
    for (const auto& [bytes, number] : cases)
        EXPECT_EQ(*PropertyList::parse(binaryList({bytes})), number);
    for (const auto* bytes : {"\x21\x3f\xc0", "\x15"})
        EXPECT_FALSE(PropertyList::parse(binaryList({bytes + std::string(40, 'x')})));
}

TEST(PropertyList, leavesOutWhatADictionaryCannotHold) {
    const PropertyList list{PropertyList::Dictionary{{"a", {std::int64_t{1}}},
                                                     {"a\xff", {std::int64_t{2}}},
                                                     {"other", {PropertyList::Other{}}}}};
    EXPECT_EQ(*PropertyList::parse(list.toBinary()),
              (PropertyList{PropertyList::Dictionary{{"a", {std::int64_t{1}}}}}));
}

TEST(PropertyList, thatNestsOrRepeatsItselfBeyondMeasureIsAnError) {
    const auto chain = [](std::size_t length, std::size_t fan) {
        std::vector<std::string> objects;
        for (std::size_t i = 0; i < length; ++i) {
            objects.push_back(fan == 1 ? container('\xa1', {i + 1})
                                       : container('\xa2', {i + 1, i + 1}));
        }
        objects.push_back("\x50");
        return objects;
    };
    // Every array of it is met near the root first.
    auto shortcuts = chain(300, 1);
    std::string root = "\xaf\x11\x01\x2c";
    for (std::size_t i = 300; i-- > 0;)
        root += {static_cast<char>(i >> 8), static_cast<char>(i)};
    shortcuts.push_back(root);

    const std::tuple<const char*, std::string, bool> cases[]{
        {"some depth", binaryList(chain(90, 1)), true},
        {"too deep", binaryList(chain(60'000, 1)), false},
        {"deep through shortcuts", binaryList(shortcuts, shortcuts.size() - 1), false},
        {"some repetition", binaryList(chain(12, 2)), true},
        {"endless repetition", binaryList(chain(64, 2)), false},
        {"a circle", binaryList({container('\xa1', {0})}), false},
        {"a reference to nothing", binaryList({container('\xa1', {1})}), false},
        {"a key that is an array", binaryList({container('\xd1', {1, 1}), "\xa0"}), false},
        {"a key with a null character",
         binaryList({container('\xd1', {1, 1}), std::string("\x61\0\0", 3)}), true},
        {"half a character", binaryList({"\x61\xd8\x3d"}), true},
        {"more text than there is", binaryList({"\x5f\x10\xff"}), false},
        {"a length without an end", binaryList({"\x5f\x13\xff\xff\xff\xff\xff\xff\xff\xff"}),
         false},
        {"no tables", "bplist00", false},
        {"XML", "<plist version=\"1.0\"><dict/></plist>", false},
        {"nothing", "", false}};
    for (const auto& [name, bytes, isRead] : cases)
        EXPECT_EQ(static_cast<bool>(PropertyList::parse(bytes)), isRead) << name;
}

} // namespace
