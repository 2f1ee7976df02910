// Date-times as text, as microseconds, as CMPI objects.
#include "host/cim/date_time.h"
#include "tests/host/host_test.h"

#include <array>
#include <chrono>

namespace cmpihost {
namespace {

struct DateTimeRow {
    const char* text;
    std::int64_t microseconds;
    bool interval;
    int utc_offset;
};

constexpr std::int64_t day = 86'400'000'000;

constexpr std::array rows{
    DateTimeRow{"19700101000000.000000+000", 0, false, 0},
    DateTimeRow{"19700102000000.000001+000", day + 1, false, 0},
    DateTimeRow{"19700101010000.000000+060", 0, false, 60},
    DateTimeRow{"19691231190000.000000-300", 0, false, -300},
    DateTimeRow{"19691231235959.999999+000", -1, false, 0},
    DateTimeRow{"20000229120000.500000+000", 11'016 * day + day / 2 + 500'000, false, 0},
    DateTimeRow{"99991231235959.999999+000", 2'932'897 * day - 1, false, 0},
    DateTimeRow{"00000000000000.000000:000", 0, true, 0},
    DateTimeRow{"00000001020304.000005:000", day + 7'384'000'005, true, 0},
    DateTimeRow{"99999999235959.999999:000", 100'000'000 * day - 1, true, 0},
};

TEST(DateTimeText, GoesBothWays) {
    for (const DateTimeRow& row : rows) {
        SCOPED_TRACE(row.text);
        const auto parsed = parse_date_time(row.text);
        ASSERT_TRUE(parsed.has_value());
        EXPECT_EQ(*parsed, (DateTime{row.microseconds, row.interval, row.utc_offset}));
        EXPECT_EQ(format_date_time(*parsed), row.text);
    }
}

TEST(DateTimeText, RefusesWhatIsNone) {
    for (const char* text : {
             "",
             "19700101000000.000000+00",   // one short
             "19700101000000.000000+0000", // one long
             "19701301000000.000000+000",  // month 13
             "19700001000000.000000+000",  // month 0
             "19700230000000.000000+000",  // 30 February
             "20010229000000.000000+000",  // no leap year
             "19700101240000.000000+000",  // hour 24
             "19700101006000.000000+000",  // minute 60
             "19700101000060.000000+000",  // second 60
             "19700101000000,000000+000",  // comma
             "19700101000000.000000*000",  // no sign
             "19700101000000.000000:000x", // one long
             "00000001000000.000000:060",  // interval with an offset
             "0000000x000000.000000:000",  // letter in the days
             "1970010100000x.000000+000",  // letter in the seconds
             "19700101000000.00000x+000",  // letter in the fraction
             "19700101000000.000000+0x0",  // letter in the offset
             "1970010-000000.000000+000",  // sign in the day
             "x9700101000000.000000+000",  // letter in the year
             "1970x101000000.000000+000",  // letter in the month
             "19700101x00000.000000+000",  // letter in the hours
             "1970010100x000.000000+000",  // letter in the minutes
             "197001010000/0.000000+000",  // sign ahead of the digits, which would count as -1
             "********000000.000000+000",  // asterisks
         })
        EXPECT_FALSE(parse_date_time(text).has_value()) << text;
}

TEST(DateTimeBinary, HasTheBoundsOfTheText) {
    EXPECT_EQ(format_date_time(*date_time_from_binary(1, false)), "19700101000000.000001+000");
    EXPECT_EQ(format_date_time(*date_time_from_binary(1, true)), "00000000000000.000001:000");
    const auto last = static_cast<std::uint64_t>(2'932'897 * day - 1);
    EXPECT_EQ(format_date_time(*date_time_from_binary(last, false)), "99991231235959.999999+000");
    EXPECT_FALSE(date_time_from_binary(last + 1, false).has_value());
    const auto longest = static_cast<std::uint64_t>(100'000'000 * day - 1);
    EXPECT_EQ(format_date_time(*date_time_from_binary(longest, true)), "99999999235959.999999:000");
    EXPECT_FALSE(date_time_from_binary(longest + 1, true).has_value());
    EXPECT_FALSE(date_time_from_binary(~std::uint64_t{0}, false).has_value());
}

class DateTimes : public InScope {
  protected:
    const CMPIBrokerEncFT& eft = *broker()->eft;
};

TEST_F(DateTimes, FromChars) {
    const CMPIDateTime* time = new_date_time("19700101010000.000007+060");
    EXPECT_EQ(time->ft->getBinaryFormat(time, nullptr), 7u);
    EXPECT_EQ(time->ft->isInterval(time, nullptr), 0);
    EXPECT_EQ(text(time->ft->getStringFormat(time, nullptr)), "19700101010000.000007+060");
}

TEST_F(DateTimes, FromBinary) {
    const CMPIDateTime* interval = eft.newDateTimeFromBinary(broker(), 61'000'000, 1, nullptr);
    EXPECT_EQ(interval->ft->isInterval(interval, nullptr), 1);
    EXPECT_EQ(interval->ft->getBinaryFormat(interval, nullptr), 61'000'000u);
    EXPECT_EQ(text(interval->ft->getStringFormat(interval, nullptr)), "00000000000101.000000:000");
    const CMPIDateTime* time = eft.newDateTimeFromBinary(broker(), 61'000'000, 0, nullptr);
    EXPECT_EQ(text(time->ft->getStringFormat(time, nullptr)), "19700101000101.000000+000");
}

TEST_F(DateTimes, OfNow) {
    using namespace std::chrono;
    const auto count = [] {
        return static_cast<CMPIUint64>(duration_cast<microseconds>(system_clock::now().time_since_epoch()).count());
    };
    const CMPIUint64 before = count();
    const CMPIDateTime* now = eft.newDateTime(broker(), nullptr);
    const CMPIUint64 after = count();
    EXPECT_LE(before, now->ft->getBinaryFormat(now, nullptr));
    EXPECT_GE(after, now->ft->getBinaryFormat(now, nullptr));
}

TEST_F(DateTimes, BadOnesAreRefused) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(eft.newDateTimeFromChars(broker(), "yesterday", &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    status.rc = CMPI_RC_OK;
    EXPECT_EQ(eft.newDateTimeFromChars(broker(), nullptr, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    status.rc = CMPI_RC_OK;
    EXPECT_EQ(eft.newDateTimeFromBinary(broker(), ~CMPIUint64{0}, 0, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(DateTimes, BeforeTheEpochHaveNoBinaryForm) {
    const CMPIDateTime* early = new_date_time("19600101000000.000000+000");
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(early->ft->getBinaryFormat(early, &status), 0u);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(text(early->ft->getStringFormat(early, nullptr)), "19600101000000.000000+000");
}

TEST_F(DateTimes, CloneAndRelease) {
    CMPIDateTime* time = new_date_time("00000001000000.000000:000");
    const CMPIDateTime* clone = time->ft->clone(time, nullptr);
    EXPECT_EQ(time->ft->release(time).rc, CMPI_RC_OK);
    EXPECT_EQ(clone->ft->isInterval(clone, nullptr), 1);
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(clone->ft->getBinaryFormat(nullptr, &status), 0u);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(clone->ft->getStringFormat(nullptr, nullptr), nullptr);
    EXPECT_EQ(clone->ft->isInterval(nullptr, nullptr), 0);
    EXPECT_EQ(clone->ft->clone(nullptr, nullptr), nullptr);
    EXPECT_EQ(clone->ft->release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

} // namespace
} // namespace cmpihost
