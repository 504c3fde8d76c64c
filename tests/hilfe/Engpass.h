#pragma once

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

/// Ways to give the code under test less than it would like.
namespace spurkiste {

constexpr uid_t kNiemand = 65534;

/// A disk that is full as soon as a file has so many bytes, for one scope: a write is first cut short, then refused
/// with EFBIG.
class VollePlatte {
  public:
    explicit VollePlatte(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &vorher_), 0);
        const rlimit eng{bytes, vorher_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &eng), 0);
    }
    VollePlatte(const VollePlatte&) = delete;
    VollePlatte& operator=(const VollePlatte&) = delete;
    ~VollePlatte() {
        ::setrlimit(RLIMIT_FSIZE, &vorher_);
        std::signal(SIGXFSZ, signal_);
    }

  private:
    rlimit vorher_{};
    void (*signal_)(int);
};

/// Leaves everybody only these rights to a file or folder for one scope, root included: root lays its own down.
class Rechte {
  public:
    Rechte(std::string pfad, std::filesystem::perms rechte)
        : pfad_(std::move(pfad)), vorher_(std::filesystem::status(pfad_).permissions()) {
        std::filesystem::permissions(pfad_, rechte);
        if (root_) {
            EXPECT_EQ(::seteuid(kNiemand), 0);
        }
    }
    Rechte(const Rechte&) = delete;
    Rechte& operator=(const Rechte&) = delete;
    ~Rechte() {
        if (root_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
        std::filesystem::permissions(pfad_, vorher_);
    }

  private:
    std::string pfad_;
    std::filesystem::perms vorher_;
    bool root_ = ::geteuid() == 0;
};

constexpr auto kNurLesen = static_cast<std::filesystem::perms>(0555);

/// Runs something in a process of its own, which may lose its rights, and returns whether it returned true.
inline bool imKind(const std::function<bool()>& tue) {
    std::fflush(nullptr);  // or the child would say again what the parent has said
    const pid_t kind = ::fork();
    if (kind == 0) {
        bool gut = false;
        try {
            gut = tue();
        } catch (const std::exception& fehler) {
            std::puts(fehler.what());
        }
        std::fflush(nullptr);
        ::_exit(gut ? 0 : 1);
    }
    int zustand = 0;
    ::waitpid(kind, &zustand, 0);
    return WIFEXITED(zustand) && WEXITSTATUS(zustand) == 0;
}

/// Makes the system fail, in this process for good, whatever call of this kind wants to have so many bytes or more; for
/// calls whose third argument says how many. False where the system cannot.
inline bool scheitereAb(long aufruf, __u32 bytes, int fehler) {
    constexpr std::size_t anzahl = offsetof(seccomp_data, args) + 2 * sizeof(__u64);
    sock_filter regeln[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 3, static_cast<__u32>(aufruf)},
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<__u32>(anzahl)},
        {BPF_JMP | BPF_JGE | BPF_K, 0, 1, bytes},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | static_cast<__u32>(fehler)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
    };
    const sock_fprog programm{static_cast<unsigned short>(std::size(regeln)), regeln};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &programm, 0, 0) == 0;
}

/// Leaves the process no descriptor more than it has, for one scope.
class KeineNummern {
  public:
    KeineNummern() {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &vorher_), 0);
        const int naechste = ::dup(0);
        const rlimit eng{static_cast<rlim_t>(naechste), vorher_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &eng), 0);
        ::close(naechste);
    }
    KeineNummern(const KeineNummern&) = delete;
    KeineNummern& operator=(const KeineNummern&) = delete;
    ~KeineNummern() { ::setrlimit(RLIMIT_NOFILE, &vorher_); }

  private:
    rlimit vorher_{};
};

/// What a file system can do beyond the bare minimum.
enum class Faehigkeiten {
    alle,
    ohneTausch,       ///< neither exclusive moves nor files without a name, like those of networks
    ohneZweiteNamen,  ///< no hard links either, like those of memory cards
};

/// Makes the system refuse this process for good what such a file system would refuse. False where the system cannot.
inline bool beschraenke(Faehigkeiten faehigkeiten) {
    if (faehigkeiten == Faehigkeiten::alle) {
        return true;
    }
    const auto lade = [](std::size_t stelle) {
        return sock_filter{BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<__u32>(stelle)};
    };
    const auto springe = [](__u16 wenn, long wert, __u8 sonst) {
        return sock_filter{static_cast<__u16>(BPF_JMP | wenn | BPF_K), 0, sonst, static_cast<__u32>(wert)};
    };
    const auto ende = [](__u32 wie) { return sock_filter{BPF_RET | BPF_K, 0, 0, wie}; };
    const bool ohneLinks = faehigkeiten == Faehigkeiten::ohneZweiteNamen;
    constexpr std::size_t nummer = offsetof(seccomp_data, nr);
    constexpr std::size_t oeffnenWie = offsetof(seccomp_data, args) + 2 * sizeof(__u64);
    constexpr long namenlos = O_TMPFILE & ~O_DIRECTORY;
    sock_filter regeln[] = {
        lade(nummer),
        springe(BPF_JEQ, SYS_renameat2, 1),
        ende(SECCOMP_RET_ERRNO | EINVAL),
        springe(BPF_JEQ, SYS_copy_file_range, 1),
        ende(SECCOMP_RET_ERRNO | EXDEV),
        springe(BPF_JEQ, ohneLinks ? SYS_linkat : -1, 1),
        ende(SECCOMP_RET_ERRNO | EPERM),
        springe(BPF_JEQ, SYS_openat, 3),
        lade(oeffnenWie),
        springe(BPF_JSET, namenlos, 1),
        ende(SECCOMP_RET_ERRNO | EOPNOTSUPP),
        ende(SECCOMP_RET_ALLOW),
    };
    const sock_fprog programm{static_cast<unsigned short>(std::size(regeln)), regeln};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &programm, 0, 0) == 0;
}

/// Makes the system refuse this process one call for good. False where the system cannot.
inline bool verweigere(long ruf, int fehler) {
    // Which of the two the C library takes for an open file depends on its version.
    if (ruf == SYS_newfstatat && !verweigere(SYS_fstat, fehler)) {
        return false;
    }
    sock_filter regeln[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<__u32>(offsetof(seccomp_data, nr))},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<__u32>(ruf)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | static_cast<__u32>(fehler)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
    };
    const sock_fprog programm{static_cast<unsigned short>(std::size(regeln)), regeln};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &programm, 0, 0) == 0;
}

}  // namespace spurkiste
