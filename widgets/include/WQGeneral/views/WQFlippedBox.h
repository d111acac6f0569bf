#pragma once
/// \class wq::WQFlippedBox
/// A box (a titled group frame) whose y axis grows downwards, so content is
/// placed from its top edge.
///
/// Every Qt widget already has its origin at the top-left with y growing
/// downwards, so the box is a QGroupBox that only answers the question for
/// code that asks; nothing is mirrored.

#include <WQGeneral/WQWidgetsExport.h>

#include <QGroupBox>

namespace wq {

/// \addtogroup views
/// @{

class WQ_WIDGETS_EXPORT WQFlippedBox : public QGroupBox {
    Q_OBJECT
public:
    /// A box without title.
    explicit WQFlippedBox(QWidget* parent = nullptr);
    /// A box with title.
    explicit WQFlippedBox(const QString& title, QWidget* parent = nullptr);
    ~WQFlippedBox() override;

    /// Always true: contents are laid out from the top.
    bool isFlipped() const noexcept { return true; }
};

/// @}

} // namespace wq
