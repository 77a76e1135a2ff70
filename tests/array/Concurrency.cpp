#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <sstream>
#include <thread>
#include <vector>

using namespace Halvora;

// What the thread sanitizer watches: one array read by all, everything else each thread's own.
TEST(Concurrency, oneArrayIsReadAndOtherObjectsAreUsedSideBySide) {
    std::wstring const texts[] = {L"a", std::wstring(300, L'b'), L""};
    HLVArray const shared(3, texts);
    std::vector<std::thread> threads;
    std::vector<std::string> printed(4);
    for (std::string& out : printed) {
        threads.emplace_back([&shared, &out, &texts] {
            std::ostringstream stream;
            for (unsigned short i = 0; i < 200; ++i) {
                HLVArray own(shared);
                HLVArray const element = shared[i % 3];
                own.addString(viewOf<std::wstring>(element)[0]);
                ResString const text(texts[i % 3]);
                HLVError::Holder holder(new HLVError(-1, new HLVError::Param(text.c_str())));
                HLVError::Holder const copy(holder);
                stream << (own == shared) << shared << own << copy << HalvTypes::ms_Version;
            }
            out = stream.str();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::string const& out : printed) {
        EXPECT_EQ(printed[0], out);
    }
}
