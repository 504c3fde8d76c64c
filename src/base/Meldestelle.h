#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace spurkiste {

/// One running observation. Ends it when destroyed; may outlive the Meldestelle. Bound to one thread.
class Abo {
  public:
    Abo() = default;
    Abo(Abo&& anderes) noexcept;
    Abo& operator=(Abo&& anderes) noexcept;
    Abo(const Abo&) = delete;
    Abo& operator=(const Abo&) = delete;
    ~Abo();

    /// Ends the observation now. A second call does nothing.
    void beende();

  private:
    friend class Meldestelle;
    struct Liste;
    Abo(const std::shared_ptr<Liste>& liste, std::uint64_t nummer);

    std::weak_ptr<Liste> liste_;
    std::uint64_t nummer_ = 0;
};

/// A list of observers that are told, in the order of their arrival, that something is about to happen.
/// Observers may end their own or any other observation, and add new ones, while they are being told.
/// Bound to one thread.
class Meldestelle {
  public:
    Meldestelle();

    /// Adds an observer; it hears every melde() from now on until the Abo ends.
    [[nodiscard]] Abo beobachte(std::function<void()> beobachter) const;

    /// Tells every observer that was there when the call began and has not been removed since.
    void melde() const;

  private:
    std::shared_ptr<Abo::Liste> liste_;
};

}  // namespace spurkiste
