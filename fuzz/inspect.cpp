#include <ctime>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/Utf8.h>

#include <tools/inspect/HexDump.h>
#include <tools/inspect/Inspect.h>

#include "Bytes.h"

using namespace Halvora;

// Gives a text as a pipe does.
struct Pipe : Source {
    explicit Pipe(std::string bytes) : text{0, std::move(bytes)} {}
    Block read() override { return std::exchange(text, {}); }
    void skipTo(std::uint64_t) override {}
    Block text;
};

// halv-inspect on any arguments and bytes: it ends soon, and what it writes steers no terminal.
void run(Bytes& bytes) {
    std::vector<std::string> words{"halv-inspect"};
    Convert::split("halv-inspect " + bytes.ConsumeRandomLengthString(100), ' ', words);
    std::vector<char*> argv(words.size() + 1);
    std::transform(words.begin(), words.end(), argv.begin(),
                   [](auto& word) { return word.data(); });
    Options options = parseOptions(static_cast<int>(words.size()), argv.data());
    options.count = std::min<std::uint64_t>(options.count.value_or(100), 100);
    std::string const content = bytes.ConsumeRemainingBytesAsString();
    Input plain(std::make_unique<Pipe>(content));
    Input dump(std::make_unique<HexDump>(std::make_unique<Pipe>(content)));
    std::ostringstream out;
    auto const start = std::clock();
    try {
        auto const* const wrong = options.wrong.getError();
        wrong == nullptr ? (void)inspect(options, options.isHexDump ? dump : plain, out, out)
                         : report(options, *wrong, out);
    } catch (HLVErrorException const& e) {
        reportFile(options, *e.error(), out);
    }
    assert(std::clock() - start < CLOCKS_PER_SEC);
    std::wstring text;
    Utf8::toWString(text, out.str());
    for (auto const c : text) {
        assert(c == '\n' || (c >= ' ' && c != 0x7F && (c < 0x80 || c > 0x9F) && c != 0x202E));
    }
}
