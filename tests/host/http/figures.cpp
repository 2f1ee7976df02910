// What the listener counts.
#include "host/http/figures.h"

#include <gtest/gtest.h>

namespace cmpihost::http {
namespace {

LogRecord record(const std::string& operation, unsigned http_status, unsigned cim_status, int milliseconds = 0) {
    LogRecord record;
    record.operation = operation;
    record.http_status = http_status;
    record.cim_status = cim_status;
    record.took = std::chrono::milliseconds(milliseconds);
    return record;
}

bool has(const Figures& figures, const std::string& line) {
    return ("\n" + figures.text({3, 2, true})).find("\n" + line + "\n") != std::string::npos;
}

TEST(Figures, RequestsAreCountedByOperationAndStatus) {
    Figures figures;
    figures.count(record("GetInstance", 200, 0));
    figures.count(record("getinstance", 200, 0));
    figures.count(record("GetInstance", 200, 6));
    figures.count(record("", 400, 0));
    figures.count(record("GET", 200, 0));
    EXPECT_TRUE(has(figures, "cmpihost_requests_total{operation=\"GetInstance\",status=\"ok\"} 2"));
    EXPECT_TRUE(has(figures, "cmpihost_requests_total{operation=\"GetInstance\",status=\"cim 6\"} 1"));
    EXPECT_TRUE(has(figures, "cmpihost_requests_total{operation=\"none\",status=\"http 400\"} 1"));
    EXPECT_TRUE(has(figures, "cmpihost_requests_total{operation=\"page\",status=\"ok\"} 1"));
    EXPECT_EQ(figures.requests(), 5U);
    EXPECT_EQ(figures.failures(), 2U);
}

TEST(Figures, WhatClientsInventGivesOneSeries) {
    Figures figures;
    for (int i = 0; i < 100; ++i)
        figures.count(record("Invented" + std::to_string(i), 200, 1000U + static_cast<unsigned>(i)));
    EXPECT_TRUE(has(figures, "cmpihost_requests_total{operation=\"other\",status=\"cim other\"} 100"));
    EXPECT_EQ(figures.text({}).find("Invented"), std::string::npos);
}

TEST(Figures, DurationsAreAHistogram) {
    Figures figures;
    for (const int took : {1, 2, 30, 60'000})
        figures.count(record("GetInstance", 200, 0, took));
    const std::string bucket = "cmpihost_request_duration_seconds_bucket{operation=\"GetInstance\",le=\"";
    EXPECT_TRUE(has(figures, bucket + "0.001\"} 1")) << figures.text({});
    EXPECT_TRUE(has(figures, bucket + "0.005\"} 2"));
    EXPECT_TRUE(has(figures, bucket + "0.02\"} 2"));
    EXPECT_TRUE(has(figures, bucket + "0.1\"} 3"));
    EXPECT_TRUE(has(figures, bucket + "25\"} 3"));
    EXPECT_TRUE(has(figures, bucket + "+Inf\"} 4"));
    EXPECT_TRUE(has(figures, "cmpihost_request_duration_seconds_sum{operation=\"GetInstance\"} 60.033000"));
    EXPECT_TRUE(has(figures, "cmpihost_request_duration_seconds_count{operation=\"GetInstance\"} 4"));
}

TEST(Figures, MomentIsTold) {
    Figures figures;
    figures.count_connection();
    EXPECT_TRUE(has(figures, "cmpihost_connections 3"));
    EXPECT_TRUE(has(figures, "cmpihost_connections_total 1"));
    EXPECT_TRUE(has(figures, "cmpihost_provider_restarts_total 2"));
    EXPECT_TRUE(has(figures, "cmpihost_provider_up 1"));
}

} // namespace
} // namespace cmpihost::http
