#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <future>
#include <sstream>

using namespace Halvora;

// What the thread sanitizer watches: one array read by all, everything else each thread's own.
TEST(Concurrency, oneArrayIsReadAndOtherObjectsAreUsedSideBySide) {
    HLVArray const shared({std::wstring(L"a"), std::wstring(300, L'b'), std::wstring()});
    auto const work = [&shared] {
        std::ostringstream stream;
        for (unsigned short i = 0; i < 200; ++i) {
            HLVArray own(shared);
            own.addString(viewOf<std::wstring>(shared)[i % 3]);
            HLVError::Holder const holder(new HLVError(-1, new HLVError::Param(i)));
            stream << (own == shared[1]) << own << holder << HalvTypes::ms_Version;
        }
        return stream.str();
    };
    auto other = std::async(std::launch::async, work);
    EXPECT_EQ(work(), other.get());
}
