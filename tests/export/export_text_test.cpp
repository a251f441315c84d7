// Numbers as text: byte for byte what printf prints.
#include "export/export_text.h"
#include "tests/support/child.h"

#include "tests/export/export_support.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace {

std::string fixed(float value, int width, int decimals) {
    ExportText text;
    text.fixed(value, width, decimals);
    return std::string(text.since(0));
}

void expect_as_printf(float value) {
    for (const int width : {0, 7, 8, 9, 20}) {
        for (int decimals = 0; decimals <= 6; ++decimals) {
            ASSERT_EQ(fixed(value, width, decimals),
                      formatted("%*.*f", width, decimals, static_cast<double>(value)))
                << std::bit_cast<uint32_t>(value) << " " << width << " " << decimals;
        }
    }
}

TEST(ExportText, Figures) {
    EXPECT_EQ(fixed(440.0f, 9, 3), "  440.000");
    EXPECT_EQ(fixed(-0.0f, 9, 3), "   -0.000");
    EXPECT_EQ(fixed(-0.0001f, 0, 3), "-0.000");
    EXPECT_EQ(fixed(123456.0f, 4, 1), "123456.0");
    EXPECT_EQ(fixed(7.0f, 3, 0), "  7");
}

TEST(ExportText, TiesGoToEven) {
    EXPECT_EQ(fixed(0.0625f, 0, 3), "0.062");
    EXPECT_EQ(fixed(0.1875f, 0, 3), "0.188");
    EXPECT_EQ(fixed(2.5f, 0, 0), "2");
    EXPECT_EQ(fixed(-3.5f, 0, 0), "-4");
}

TEST(ExportText, OddNumbersAsPrintf) {
    using limits = std::numeric_limits<float>;
    for (const float value :
         {limits::infinity(), -limits::infinity(), limits::quiet_NaN(), -limits::quiet_NaN(),
          limits::max(), limits::lowest(), limits::min(), limits::denorm_min(), 0.0f, 0x1p53f,
          0x1p33f, 9007199.0f, 9.0071995e9f, 9.007198e9f, 9.0072e12f, 0.9999999f, 0.99999994f}) {
        expect_as_printf(value);
    }
}

TEST(ExportText, RandomNumbersAsPrintf) {
    std::mt19937 random(20);
    for (int i = 0; i < (sanitized() ? 4000 : 20000); ++i) {
        expect_as_printf(std::bit_cast<float>(static_cast<uint32_t>(random())));
    }
    std::uniform_real_distribution<float> usual(-200.0f, 22050.0f);
    for (int i = 0; i < (sanitized() ? 4000 : 20000); ++i) {
        const float value = usual(random);
        expect_as_printf(value);
        expect_as_printf(std::rint(value * 16.0f) / 16.0f); // many ties
    }
}

TEST(ExportText, WholeNumbersAndLongTexts) {
    ExportText text;
    for (const int32_t value : {0, 7, -7, INT32_MAX, INT32_MIN}) {
        text.whole(value);
        text.put(" ");
    }
    EXPECT_EQ(text.since(0), "0 7 -7 2147483647 -2147483648 ");
    const size_t mark = text.size();
    const std::string longest(3000, 'x');
    text.print("<%s|%d>", longest.c_str(), 3);
    EXPECT_EQ(text.since(mark), "<" + longest + "|3>");
    text.print("%s", std::string(511, 'y').c_str());
    text.print("%s", std::string(512, 'z').c_str());
    EXPECT_EQ(text.size(), mark + longest.size() + 4 + 511 + 512);
    text.clear();
    EXPECT_EQ(text.size(), 0u);
}

} // namespace
