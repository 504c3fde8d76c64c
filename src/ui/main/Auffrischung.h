#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace spurkiste {

/// Turns many requests for a refresh into few refreshes: those of one turn of the event loop become one, and two
/// refreshes are at least one frame apart, so that a flood of changes leaves the loop free to answer.
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
    std::function<void()> tue_;
    QTimer wecker_;
    QElapsedTimer seitLetzter_;
};

}  // namespace spurkiste
