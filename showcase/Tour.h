#pragma once
// The scripted tour: runs every feature's steps with real key events,
// prints what each field shows and any refusal, and saves a screenshot of
// the window per step.

#include <QString>

#include <memory>
#include <vector>

namespace showcase {

class RegisterWindow;
class ShowcaseFeature;

// Answers the process exit status: 0, or 1 when a screenshot could not be saved.
int runTour(RegisterWindow& window, const std::vector<std::unique_ptr<ShowcaseFeature>>& features,
            const QString& directory);

} // namespace showcase
