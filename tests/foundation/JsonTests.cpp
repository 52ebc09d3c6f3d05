#include "foundation/Json.h"
#include "foundation/Text.h"

#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

namespace corvane::json {
namespace {

std::string written(const std::function<void(Writer&)>& write) {
    Writer writer;
    write(writer);
    return writer.take();
}

TEST(JsonWriter, commasStandBetweenWhateverFollows) {
    EXPECT_EQ(written([](Writer& writer) {
                  writer.startObject();
                  writer.key("a");
                  writer.startArray();
                  writer.startArray();
                  writer.endArray();
                  writer.startObject();
                  writer.endObject();
                  writer.flag(true);
                  writer.integer(std::numeric_limits<std::int64_t>::min());
                  writer.uuid(*Uuid::parse("7c9e6679-7425-40de-944b-e07fc1f90ae7"));
                  writer.endArray();
                  writer.key("b");
                  writer.rect({1, 2.5, 3, 4});
                  writer.key("");
                  writer.text("");
                  writer.endObject();
              }),
              R"({"a":[[],{},true,-9223372036854775808,"7C9E6679-7425-40DE-944B-E07FC1F90AE7"],)"
              R"("b":[[1.0,2.5],[3.0,4.0]],"":""})");
}

TEST(JsonWriter, everyTextReadsBackWhereverItsOddBytesStand) {
    const std::string filler = "12345678 äöü 漢字 😀 12345678";
    for (int byte = 0; byte < 0x80; ++byte) {
        for (std::size_t before = 0; before <= filler.size(); ++before) {
            if (before < filler.size() && (filler[before] & 0xC0) == 0x80) continue;
            std::string text = filler;
            text.insert(before, 1, static_cast<char>(byte));
            const auto json = written([&](Writer& writer) { writer.text(text); });
            EXPECT_EQ(Document(json, "it").root().text(), text) << byte << " at " << before;
        }
    }
    EXPECT_EQ(written([](Writer& writer) {
                  writer.text(std::string_view("\0\x1f\b\f\n\r\t\"\\/\x7fü", 13));
              }),
              "\"\\u0000\\u001F\\b\\f\\n\\r\\t\\\"\\\\/\x7fü\"");
    for (const std::string text : {"1234567\xff", "1234567\xc3", "\xed\xa0\x80", "\x80"})
        EXPECT_THROW(written([&](Writer& writer) { writer.text(text); }), EncodeError);
}

TEST(JsonWriter, numbersReadBackToTheLastBit) {
    using Limits = std::numeric_limits<double>;
    for (const double number :
         {0.0, -0.0, 1.0 / 3, 0.1, 757382400.0, -1440.25, 1e15, 1e16, 1e21, 123456789012345680.0,
          Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(), 1e-7}) {
        const auto json = written([&](Writer& writer) { writer.number(number); });
        const double again = Document(json, "it").root().number();
        EXPECT_EQ(again, number) << json;
        EXPECT_EQ(std::signbit(again), std::signbit(number)) << json;
    }
    EXPECT_EQ(written([](Writer& writer) { writer.number(757382400); }), "757382400.0");
    for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
        EXPECT_THROW(written([&](Writer& writer) { writer.number(number); }), EncodeError);
}

TEST(JsonWriter, theBufferGrowsWithTheTextAndIsEmptyWhenItWasTaken) {
    Writer writer;
    for (const std::size_t length : {10000u, 3u}) {
        std::vector<std::string> expected;
        writer.startArray();
        for (std::size_t i = 0; i < length; ++i) {
            const std::string quotes(i % 50, '"');
            writer.text(quotes);
            expected.push_back('"' + text::replacingAll(quotes, "\"", "\\\"") + '"');
        }
        writer.endArray();
        EXPECT_TRUE(writer.take() == "[" + text::joined(expected, ",") + "]");
    }
}

TEST(JsonWriter, prettyPrintingAddsOnlyWhiteSpaceOutsideOfTexts) {
    EXPECT_EQ(prettyPrinted(R"({"a{":[1.0,[]],"b\\":{},"c":"\"[,:]\\","d":[{"e":null}]})"),
              R"({
  "a{": [
    1.0,
    []
  ],
  "b\\": {},
  "c": "\"[,:]\\",
  "d": [
    {
      "e": null
    }
  ]
})");
    EXPECT_EQ(prettyPrinted("[]"), "[]");
}

TEST(JsonReader, ofSeveralMembersTheFirstCountsAndElementsKnowTheirPlaces) {
    const Document document(R"({"x":{"y":[1,{"z":[2,[]]}]},"a":1,"a":2,"n":null,"n":3,"":4})",
                            "it");
    const auto root = document.root();
    EXPECT_EQ(root.required("a").int64(), 1);
    EXPECT_FALSE(root.optional("n"));
    EXPECT_EQ(root.required("").int64(), 4);
    EXPECT_FALSE(root.optional("z"));
    // A value needs only its document.
    const auto z = root.required("x").required("y").elements().at(1).required("z").elements().at(1);
    try {
        z.text();
        FAIL();
    } catch (const DecodeError& error) {
        EXPECT_STREQ(error.what(), "it.x.y[1].z[1]: a text was expected");
    }
}

} // namespace
} // namespace corvane::json
