#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace spurkiste {

/// Turns many requests for a refresh into few refreshes: those of one turn of the event loop become one, and two
/// refreshes are at least one frame apart, and as far as the last one took: a flood of changes leaves half of the
/// loop's time to the user, however large the library is.
class Auffrischung final : public QObject {
    Q_OBJECT

  public:
    /// `tue` does the work, in a turn of the event loop of its own.
    explicit Auffrischung(std::function<void()> tue, QObject* eltern = nullptr);

    /// Asks for a refresh; cheap, and harmless inside a notification.
    void fordere();
    /// Does a requested or unrequested refresh now: for a key stroke or a click, which must not wait for a frame.
    void sofort();

  private:
    static constexpr qint64 kBildMs = 16;  ///< a frame

    std::function<void()> tue_;
    QTimer wecker_;
    QElapsedTimer seitLetzter_;
    qint64 pauseMs_ = kBildMs;  ///< from the end of the last refresh to the next that was asked for
};

}  // namespace spurkiste
