// The main of a fuzzer that is not linked against libFuzzer: feeds every file of the given folders to it once.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse);

int main(int anzahl, char** argumente) {
    int gespielt = 0;
    for (int i = 1; i < anzahl; ++i) {
        for (const auto& datei : std::filesystem::directory_iterator(argumente[i])) {
            std::ifstream strom(datei.path(), std::ios::binary);
            const std::string inhalt{std::istreambuf_iterator<char>(strom), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(inhalt.data()), inhalt.size());
            ++gespielt;
        }
    }
    std::printf("%d inputs replayed\n", gespielt);
    return gespielt > 0 ? 0 : 1;
}
