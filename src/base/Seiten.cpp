#include "base/Seiten.h"

#include <cstdint>
#include <new>

#include <sys/mman.h>

namespace spurkiste {

namespace {

/// Maps more than is asked for and gives back what lies outside of the alignment that large pages need.
std::byte* bildeAb(std::size_t groesse) {
    const bool gross = groesse >= Seiten::kGrosseSeite;
    const std::size_t zugabe = gross ? Seiten::kGrosseSeite : 0;
    void* const roh =
        ::mmap(nullptr, groesse + zugabe, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    // The system's macro casts a number to a pointer.
    if (roh == MAP_FAILED) {  // NOLINT(cppcoreguidelines-pro-type-cstyle-cast, performance-no-int-to-ptr)
        throw std::bad_alloc();
    }
    auto* const anfang = static_cast<std::byte*>(roh);
    if (!gross) {
        return anfang;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): only to see how it is aligned
    const auto adresse = reinterpret_cast<std::uintptr_t>(roh);
    const std::size_t vorn = (zugabe - adresse % zugabe) % zugabe;
    if (vorn > 0) {
        ::munmap(anfang, vorn);
    }
    if (vorn < zugabe) {
        ::munmap(anfang + vorn + groesse, zugabe - vorn);
    }
    ::madvise(anfang + vorn, groesse, MADV_HUGEPAGE);  // a wish; without it the memory is as good
    return anfang + vorn;
}

std::size_t aufSeiten(std::size_t groesse) {
    constexpr std::size_t seite = 4096;
    return (groesse + seite - 1) / seite * seite;
}

}  // namespace

void Seiten::Rueckgabe::operator()(std::byte* anfang) const {
    ::munmap(anfang, groesse);
}

Seiten::Seiten(std::size_t groesse) : groesse_(aufSeiten(groesse)), anfang_(bildeAb(groesse_), Rueckgabe{groesse_}) {}

}  // namespace spurkiste
