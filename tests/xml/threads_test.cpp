// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "xml/parser.h"

namespace {

using namespace xml_tests;

TEST(XmlThreads, ReadersOnDifferentThreadsAreIndependent) {
    constexpr std::size_t kThreads = 4;
    std::vector<int> right(kThreads, 0);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &right] {
            const std::string value = std::to_string(t);
            for (int i = 0; i < 50; ++i) {
                OXAISAXXMLReader_var reader;
                OXAISAXInputSource_var source;
                const OXAIXMLSAX2Factory_var factory = make_factory();
                factory->CreateXMLReader(reader);
                factory->CreateInputSourceFromText(("<a>" + value + "<b></a>").c_str(), "", source);
                const auto handler = OXAVar<RecordingHandler>::Adopt(new RecordingHandler);
                reader->SetContentHandler(OXAISAXContentHandler_var(handler));
                reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
                const bool failed = reader->Parse(source) == E_FAIL;
                if (failed && handler->events.at(3) == "text " + value && handler->problems.size() == 1)
                    ++right[t];
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, std::vector<int>(kThreads, 50));
}

}  // namespace
