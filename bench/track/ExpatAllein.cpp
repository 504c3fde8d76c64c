// ExpatAllein FOLDER: what the XML library alone takes for all GPX files of a folder, without anybody who listens. For
// messe.py, which holds the whole program against it.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include <expat.h>

namespace {

struct Ende {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/// Reads the file into the buffer, which only grows, and parses it in one piece.
bool zerlege(const std::filesystem::path& pfad, std::vector<char>& puffer) {
    const auto groesse = std::filesystem::file_size(pfad);
    if (puffer.size() < groesse) {
        puffer.resize(groesse);
    }
    std::ifstream strom(pfad, std::ios::binary);
    strom.rdbuf()->pubsetbuf(nullptr, 0);
    strom.read(puffer.data(), static_cast<std::streamsize>(groesse));
    const std::unique_ptr<XML_ParserStruct, Ende> parser(XML_ParserCreate(nullptr));
    return strom && XML_Parse(parser.get(), puffer.data(), static_cast<int>(groesse), XML_TRUE) == XML_STATUS_OK;
}

}  // namespace

int main(int anzahl, char** argumente) {
    if (anzahl != 2) {
        std::fputs("usage: ExpatAllein FOLDER\n", stderr);
        return 2;
    }
    std::vector<char> puffer;
    for (const auto& datei : std::filesystem::directory_iterator(argumente[1])) {
        if (datei.path().extension() == ".gpx" && !zerlege(datei.path(), puffer)) {
            std::fprintf(stderr, "ExpatAllein: %s is not well-formed\n", datei.path().c_str());
            return 1;
        }
    }
    return 0;
}
