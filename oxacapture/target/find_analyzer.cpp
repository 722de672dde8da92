#include "oxacapture/target/find_analyzer.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>

namespace OXA_CAPTURE {

namespace {

constexpr int kSearchTime = 120; // s
constexpr int kSecond = 1000; // ms

}

std::unique_ptr<CaptureSession> findAnalyzer(OpenOcdLink& link, const QStringList& taps,
    const std::function<bool(CaptureSession&)>& isWanted, const std::function<bool()>& goesOn,
    QString& error)
{
    const QDeadlineTimer deadline(qint64(kSearchTime) * kSecond);
    link.setGoesOn([&goesOn, deadline] { return goesOn() && !deadline.hasExpired(); });
    std::unique_ptr<CaptureSession> found;
    for (int i = 0; i < taps.size() && !found; ++i) {
        if (!link.selectTap(taps.at(i))) {
            error = link.error();
            continue;
        }
        auto session = std::make_unique<CaptureSession>(link, link.instruction());
        if (session->begin() && isWanted(*session))
            found = std::move(session);
        else
            error = session->error();
    }
    if (!found && deadline.hasExpired())
        error = QString("no analyzer was found within %1 s: OpenOCD answers too slowly")
                    .arg(kSearchTime);
    link.setGoesOn(goesOn);
    return found;
}

std::function<bool()> aSecondLonger(const std::function<bool()>& goesOn)
{
    return [goesOn, since = QElapsedTimer()]() mutable {
        if (!since.isValid() && !goesOn())
            since.start();
        return !since.isValid() || since.elapsed() < kSecond;
    };
}

}
