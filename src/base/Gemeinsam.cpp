#include "base/Gemeinsam.h"

#include <atomic>
#include <exception>
#include <memory>

namespace spurkiste {

namespace {

/// Who is inside, and whether somebody may still come in. Outlives the call, for helpers that come too late.
class Tuer {
  public:
    explicit Tuer(const std::function<void()>& arbeit) : arbeit_(&arbeit) {}

    void hilf() {
        unsigned stand = stand_.load();
        do {
            if ((stand & kZu) != 0) {
                return;
            }
        } while (!stand_.compare_exchange_weak(stand, stand + 1));
        arbeite();
        stand_.fetch_sub(1);
        stand_.notify_all();
    }

    void arbeite() noexcept {
        try {
            (*arbeit_)();
        } catch (...) {
            if (!gescheitert_.exchange(true)) {
                ausnahme_ = std::current_exception();
            }
        }
    }

    void schliesse() {
        unsigned stand = stand_.fetch_or(kZu) | kZu;
        while (stand != kZu) {
            stand_.wait(stand);
            stand = stand_.load();
        }
        if (ausnahme_) {
            std::rethrow_exception(ausnahme_);
        }
    }

  private:
    static constexpr unsigned kZu = 1U << 31U;

    const std::function<void()>* arbeit_;  // the caller's, which waits for all who came in
    std::atomic<unsigned> stand_ = 0;      // how many helpers are inside, and kZu
    std::atomic<bool> gescheitert_ = false;
    std::exception_ptr ausnahme_;  // written by one, read when all have left
};

}  // namespace

void arbeiteGemeinsam(Ausfuehrer* ausfuehrer, unsigned helfer, const std::function<void()>& arbeit) {
    const auto tuer = std::make_shared<Tuer>(arbeit);
    for (unsigned i = 0; ausfuehrer != nullptr && i < helfer; ++i) {
        ausfuehrer->fuehreAus([tuer] { tuer->hilf(); });
    }
    tuer->arbeite();
    tuer->schliesse();
}

}  // namespace spurkiste
