// The main of a fuzzer that is not linked against libFuzzer: feeds every file of the given folders to it once. With
// --laeufe=N it then goes on with N changed ones, for a fuzzer that knows how to change its inputs: without libFuzzer's
// bookkeeping that is many times faster. The same --saat=N gives the same inputs.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

// The names are libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse);
extern "C" __attribute__((weak)) std::size_t LLVMFuzzerCustomMutator(std::uint8_t* daten, std::size_t groesse,
                                                                     std::size_t hoechstens, unsigned int saat);

namespace {

using Eingabe = std::vector<std::uint8_t>;

std::vector<Eingabe> spieleAb(const std::string& ordner) {
    std::vector<Eingabe> eingaben;
    for (const auto& datei : std::filesystem::directory_iterator(ordner)) {
        std::ifstream strom(datei.path(), std::ios::binary);
        eingaben.emplace_back(std::istreambuf_iterator<char>(strom), std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(eingaben.back().data(), eingaben.back().size());
    }
    return eingaben;
}

void veraendere(std::vector<Eingabe> eingaben, unsigned long laeufe, unsigned int saat) {
    constexpr std::size_t hoechstens = 8192;
    constexpr std::size_t vorrat = 2000;
    std::minstd_rand zufall(saat);
    for (unsigned long i = 0; i < laeufe; ++i) {
        Eingabe eingabe = eingaben[zufall() % eingaben.size()];
        const std::size_t groesse = eingabe.size();
        eingabe.resize(std::max(groesse, hoechstens));
        eingabe.resize(
            LLVMFuzzerCustomMutator(eingabe.data(), groesse, eingabe.size(), static_cast<unsigned>(zufall())));
        LLVMFuzzerTestOneInput(eingabe.data(), eingabe.size());
        // Changes add up over many generations, but never for ever.
        if (eingaben.size() < vorrat) {
            eingaben.push_back(std::move(eingabe));
        } else if (zufall() % 8 == 0) {
            eingaben[zufall() % vorrat] = std::move(eingabe);
        }
    }
}

}  // namespace

int main(int anzahl, char** argumente) {
    unsigned long laeufe = 0;
    unsigned int saat = 1;
    std::vector<Eingabe> eingaben;
    for (int i = 1; i < anzahl; ++i) {
        const std::string argument = argumente[i];
        if (argument.starts_with("--laeufe=")) {
            laeufe = std::stoul(argument.substr(argument.find('=') + 1));
        } else if (argument.starts_with("--saat=")) {
            saat = static_cast<unsigned int>(std::stoul(argument.substr(argument.find('=') + 1)));
        } else {
            for (Eingabe& eingabe : spieleAb(argument)) {
                eingaben.push_back(std::move(eingabe));
            }
        }
    }
    std::printf("%zu inputs replayed\n", eingaben.size());
    if (laeufe > 0 && LLVMFuzzerCustomMutator != nullptr && !eingaben.empty()) {
        std::fflush(stdout);
        veraendere(eingaben, laeufe, saat);
        std::printf("%lu changed ones\n", laeufe);
    }
    return eingaben.empty() ? 1 : 0;
}
