// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "sax/element_reader.h"
#include "support/log_capture.h"

namespace {

using namespace sax;
using support::LogCapture;
using Records = std::vector<support::LogRecord>;
using Type = vSAXDefaultHandler::ELogType;

Records one(const std::string& text) { return {{"Default", 5, text}}; }

class SaxHandlerLog : public testing::Test {
protected:
    ElementReader_var handler = make_reader();
    OXAVar<FixedLocator> locator = make_locator(12, 34);
    OXASAXParseException problem{"what is wrong", 77, 88};
    LogCapture log;
};

TEST_F(SaxHandlerLog, HasTheLabelOfItsType) {
    handler->Log("text", Type::Error);
    handler->Log("text", Type::Warning);
    handler->Log("text", Type::FatalError);
    EXPECT_EQ(log.records(), (Records{{"Default", 5, "Error : line 0 column 0 text"},
                                      {"Default", 5, "Warning : line 0 column 0 text"},
                                      {"Default", 5, "FatalError : line 0 column 0 text"}}));
}

TEST_F(SaxHandlerLog, HasTheLocatorsPosition) {
    handler->SetDocumentLocator(locator);
    handler->Log("text", Type::Error);
    handler->Log("text", Type::Warning);
    handler->Log("text", Type::FatalError);
    EXPECT_EQ(log.records(), (Records{{"Default", 5, "Error : line 12 column 34 text"},
                                      {"Default", 5, "Warning : line 12 column 34 text"},
                                      {"Default", 5, "FatalError : line 12 column 34 text"}}));
}

TEST_F(SaxHandlerLog, AsksForTheLineAndThenTheColumn) {
    handler->SetDocumentLocator(locator);
    handler->Log("text", Type::Warning);
    EXPECT_EQ(locator->asked, (std::vector<std::string>{"line", "column"}));
}

TEST_F(SaxHandlerLog, APercentSignInAProblemIsText) {
    handler->Log("100%s %d", Type::Error);
    EXPECT_EQ(log.records(), one("Error : line 0 column 0 100%s %d"));
}

TEST_F(SaxHandlerLog, AMessageStandsAlone) {
    handler->Log("hello", Type::Message);
    handler->SetDocumentLocator(locator);
    handler->Log("hello", Type::Message);
    EXPECT_EQ(log.records(), (Records{{"Default", 5, "hello"}, {"Default", 5, "hello"}}));
    EXPECT_TRUE(locator->asked.empty());
}

TEST_F(SaxHandlerLog, AMessageIsTheFormat) {
    handler->Log("100%%", Type::Message);
    handler->SetDocumentLocator(locator);
    handler->Log("100%%", Type::Message);
    EXPECT_EQ(log.records(), (Records{{"Default", 5, "100%"}, {"Default", 5, "100%"}}));
}

TEST_F(SaxHandlerLog, OfAnUnknownTypeIsNothing) {
    for (const int type : {-1, 4, 7}) handler->Log("text", static_cast<Type>(type));
    handler->SetDocumentLocator(locator);
    for (const int type : {-1, 4, 7}) handler->Log("text", static_cast<Type>(type));
    EXPECT_EQ(log.records(), Records{});
}

TEST_F(SaxHandlerLog, TheTypesHaveTheirValues) {
    EXPECT_EQ(static_cast<int>(Type::Error), 0);
    EXPECT_EQ(static_cast<int>(Type::Warning), 1);
    EXPECT_EQ(static_cast<int>(Type::FatalError), 2);
    EXPECT_EQ(static_cast<int>(Type::Message), 3);
}

TEST_F(SaxHandlerLog, AnErrorIsLoggedAndCounted) {
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->Error(&problem), S_OK);
    EXPECT_EQ(log.records(), one("Error : line 12 column 34 what is wrong"));
    EXPECT_EQ(handler->GetNbErrors(), 1U);
}

TEST_F(SaxHandlerLog, AFatalErrorIsLoggedAndCounted) {
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->FatalError(&problem), S_OK);
    EXPECT_EQ(log.records(), one("FatalError : line 12 column 34 what is wrong"));
    EXPECT_EQ(handler->GetNbErrors(), 1U);
}

TEST_F(SaxHandlerLog, AWarningIsLoggedAndNotCounted) {
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->Warning(&problem), S_OK);
    EXPECT_EQ(log.records(), one("Warning : line 12 column 34 what is wrong"));
    EXPECT_EQ(handler->GetNbErrors(), 0U);
}

TEST_F(SaxHandlerLog, ThePositionIsTheLocatorsNotTheProblems) {
    handler->Error(&problem);
    EXPECT_EQ(log.records(), one("Error : line 0 column 0 what is wrong"));
}

TEST_F(SaxHandlerLog, NoErrorFailsAndIsCounted) {
    EXPECT_EQ(handler->Error(nullptr), E_FAIL);
    EXPECT_EQ(log.records(), one("Error : line 0 column 0 Could not recover from error"));
    EXPECT_EQ(handler->GetNbErrors(), 1U);
}

TEST_F(SaxHandlerLog, NoFatalErrorFailsAsAnError) {
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->FatalError(nullptr), E_FAIL);
    EXPECT_EQ(log.records(), one("Error : line 12 column 34 Could not recover from fatal error"));
    EXPECT_EQ(handler->GetNbErrors(), 1U);
}

TEST_F(SaxHandlerLog, NoWarningFailsAndIsNotCounted) {
    EXPECT_EQ(handler->Warning(nullptr), E_FAIL);
    EXPECT_EQ(log.records(), one("Warning : line 0 column 0 Could not recover from fatal Warning"));
    EXPECT_EQ(handler->GetNbErrors(), 0U);
}

/// Redirects the log of its problems.
class Redirecting : public ElementReader {
public:
    std::vector<std::pair<std::string, int>> heard;
    void Log(const char* message, ELogType type) override {
        heard.emplace_back(message, static_cast<int>(type));
    }
};

TEST_F(SaxHandlerLog, IsCalledThroughTheVirtualOperation) {
    const auto redirecting = OXAVar<Redirecting>::Adopt(new Redirecting);
    redirecting->Error(&problem);
    redirecting->FatalError(&problem);
    redirecting->Warning(&problem);
    redirecting->FatalError(nullptr);
    EXPECT_EQ(redirecting->heard,
              (std::vector<std::pair<std::string, int>>{{"what is wrong", 0},
                                                        {"what is wrong", 2},
                                                        {"what is wrong", 1},
                                                        {"Could not recover from fatal error", 0}}));
    EXPECT_EQ(log.records(), Records{});
}

}  // namespace
