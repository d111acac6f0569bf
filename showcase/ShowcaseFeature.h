#pragma once
// How a feature joins the showcase: it adds its fields to the register
// window's entry row and contributes steps to the scripted tour. Features are
// listed once, in ShowcaseFeatures.cpp.

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace showcase {

class RegisterWindow;

struct TourStep {
    QString title;              // what the step does, e.g. type "+"
    QWidget* field = nullptr;   // the field whose text is printed afterwards
    std::function<void()> act;  // sends the step's key events
};

class ShowcaseFeature {
public:
    virtual ~ShowcaseFeature() = default;
    // Adds the feature's field groups to the window.
    virtual void build(RegisterWindow& window) = 0;
    // The feature's part of the tour, in order.
    virtual QList<TourStep> tourSteps(RegisterWindow& window) = 0;
};

// Every feature, in the order of the entry row.
std::vector<std::unique_ptr<ShowcaseFeature>> makeFeatures();

} // namespace showcase
