#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "sicht/UriListe.h"

namespace spurkiste {
namespace {

TEST(UriListe, understandsEveryFileManagerAndNothingElse) {
    struct Fall {
        std::string_view liste;
        std::vector<std::string> pfade;
    };
    for (const Fall& fall : std::vector<Fall>{
             {"file:///a/b.gpx\r\nfile:///c%20d.gpx\r\n", {"/a/b.gpx", "/c d.gpx"}},
             {"# comment\nfile://localhost/a\nFILE://LocalHost/b\nfile:/c", {"/a", "/b", "/c"}},
             {"file:///Z%C3%BCrich.gpx\nfile:///Zürich.gpx\nfile:///%FF.gpx",
              {"/Zürich.gpx", "/Zürich.gpx", "/\xFF.gpx"}},
             {"  file:///a \n\n", {"/a"}},
             {"file:///100%.gpx\nfile:///%zz\nfile:///a%", {"/100%.gpx", "/%zz", "/a%"}},
             {"file:///a#b?c", {"/a#b?c"}},
             {"file://other/a\nhttps://example.org/a.gpx\nfile:a\nfile://\nfile:\n/a\ntext", {}},
             {"file:///a%00b", {}},
             {std::string_view("file:///a\0file:///b", 19), {"/a", "/b"}},
             {"", {}},
         }) {
        EXPECT_EQ(uriliste::pfade(fall.liste), fall.pfade) << fall.liste;
    }
}

}  // namespace
}  // namespace spurkiste
