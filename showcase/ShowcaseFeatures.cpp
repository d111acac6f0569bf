#include "ShowcaseFeature.h"

namespace showcase {

std::unique_ptr<ShowcaseFeature> makeDateFields();
std::unique_ptr<ShowcaseFeature> makeMoneyFields();
std::unique_ptr<ShowcaseFeature> makeCalculatorTour();
std::unique_ptr<ShowcaseFeature> makeAccountsTree();
std::unique_ptr<ShowcaseFeature> makeWindowMenus();
std::unique_ptr<ShowcaseFeature> makeRegisterEditing();
std::unique_ptr<ShowcaseFeature> makeWindowToolbar();
std::unique_ptr<ShowcaseFeature> makeAlertSheets();
std::unique_ptr<ShowcaseFeature> makeViewsAndPanels();
std::unique_ptr<ShowcaseFeature> makeRegisterTour();

std::vector<std::unique_ptr<ShowcaseFeature>> makeFeatures()
{
    std::vector<std::unique_ptr<ShowcaseFeature>> features;
    // One line per feature, in entry-row order.
    features.push_back(makeDateFields());
    features.push_back(makeMoneyFields());
    features.push_back(makeCalculatorTour());
    features.push_back(makeAccountsTree());
    features.push_back(makeWindowMenus());
    features.push_back(makeRegisterEditing());
    features.push_back(makeWindowToolbar());
    features.push_back(makeAlertSheets());
    features.push_back(makeViewsAndPanels());
    features.push_back(makeRegisterTour());
    return features;
}

} // namespace showcase
