#include <utility>

#include <pelta/Annotations/PgmLocationAnnotationView.h>
#include <pelta/Annotations/PgmLocationIcon.h>
#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Make.h>
#include <pelta/View/DefaultStyle.h>
#include <pelta/View/PgmMapView.h>

#include "View/OrnamentControls.h"
#include "View/PgmPrivateMapDelegate.h"
#include "View/ShapeRegistry.h"
#include "View/ViewSettings.h"

namespace pelta {

namespace {

void fillSuperview(UIView& view, const UIView& superview) {
    view.setTranslatesAutoresizingMaskIntoConstraints(false);
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints;
    for (const auto edge : {NSLayoutAttribute::left, NSLayoutAttribute::right, NSLayoutAttribute::top,
                            NSLayoutAttribute::bottom}) {
        constraints.push_back(NSLayoutConstraint::equal(view.anchor(edge), superview.anchor(edge)));
    }
    NSLayoutConstraint::activate(constraints);
}

/// Shows a built-in picture, at its own size, in an ornament of the engine; without the picture the ornament
/// stays as the engine made it.
void replaceImage(UIImageView& ornament, std::string_view imageName) {
    const auto image = Bundle::library().imageNamed(imageName);
    if (!image) {
        return;
    }
    for (const auto& constraint : ornament.constraints()) {
        if (constraint->identifier() == "width") {
            constraint->setConstant(image->size().width);
        } else if (constraint->identifier() == "height") {
            constraint->setConstant(image->size().height);
        }
    }
    ornament.setImage(image);
}

}  // namespace

std::shared_ptr<PgmMapView> PgmMapView::create(CGRect frame, std::shared_ptr<PgmMapOptions> options,
                                               const std::shared_ptr<PgmMapDelegate>& delegate) {
    return make<PgmMapView>(frame, std::move(options), delegate);
}

std::shared_ptr<PgmMapView> PgmMapView::createWithCoder(const PgmViewSettings& settings) {
    return make<PgmMapView>(settings);
}

PgmMapView::PgmMapView(CGRect frame, std::shared_ptr<PgmMapOptions> options,
                       const std::shared_ptr<PgmMapDelegate>& delegate)
    : UIView(frame),
      startOptions_(std::move(options)),
      mapDelegate_(std::make_shared<PrivateMapDelegate>()),
      shapes_(std::make_unique<ShapeRegistry>()),
      controls_(std::make_unique<OrnamentControls>()),
      locationAnnotaionView_(PgmLocationAnnotationView::create("PgmLocationAnnotationView")),
      locationIcon_(PgmLocationIcon::create()),
      delegate_(delegate) {}

PgmMapView::PgmMapView(const PgmViewSettings& settings) : PgmMapView(settings.frame) {
    applyViewSettings(*this, settings);
}

PgmMapView::~PgmMapView() = default;

void PgmMapView::completeConstruction(std::string_view className) {
    UIView::completeConstruction(className);
    mapViewInit();
    controllerInit();
    mapOptions_ = std::move(startOptions_);
    if (const auto options = mapOptions_) {
        applyMapOptions(*options);
    }
}

void PgmMapView::mapViewInit() {
    mapDelegate_->setPgmMapView(sharedThis());
    locationIcon_->setMapview(sharedThis());
    if (startOptions_) {
        setStyleOf(*startOptions_);
    }
    engine_ = MLNMapView::initWithFrameStyleURL(
        bounds(), firstStyle_ ? std::nullopt : std::optional(std::string(defaultStyleURL())));
    shapes_->setEngine(engine_);
    addSubview(engine_);
    fillSuperview(*engine_, *this);
    engine_->setShowsAttributionButton(false);
    engine_->setDelegate(mapDelegate_);
    replaceImage(*engine_->logoView(), "peltamap_pelta_logo");
    replaceImage(*engine_->compassView(), "peltamap_compass_normal");
    engine_->setContentInset(engine_->contentInset(), false, [] {});
    recognizersInit();
    if (const auto setStyle = std::exchange(firstStyle_, nullptr)) {
        setStyle(*engine_);
    }
}

void PgmMapView::setStyleOf(const PgmMapOptions& options) {
    if (const auto& document = options.styleJSON()) {
        setStyleJSON(*document);
    } else if (const auto& address = options.styleURL()) {
        setStyleURL(*address);
    }
}

std::shared_ptr<PgmMapView> PgmMapView::sharedThis() {
    return std::static_pointer_cast<PgmMapView>(shared_from_this());
}

// Shapes run the application's code, which may release the view.

void PgmMapView::addShape(const std::shared_ptr<PgmShape>& shape) {
    MainQueue::sync([this, shape] {
        const auto held = weak_from_this().lock();
        if (shape) {
            shapes_->add(shape);
        }
    });
}

void PgmMapView::removeShape(const std::shared_ptr<PgmShape>& shape) {
    MainQueue::sync([this, shape] {
        const auto held = weak_from_this().lock();
        if (shape) {
            shapes_->remove(shape);
        }
    });
}

const PgmMapView::ShapesMap& PgmMapView::shapesMap() const noexcept {
    return shapes_->shapes();
}

const PgmMapView::ShapesMap& PgmMapView::willBeRemovedShapesMap() const noexcept {
    return shapes_->shapesToRemove();
}

void PgmMapView::drawShape(PgmShape& shape) {
    const auto held = weak_from_this().lock();
    shapes_->draw(shape);
}

void PgmMapView::updateSource(std::string_view identifier) {
    const auto held = weak_from_this().lock();
    shapes_->updateSource(identifier);
}

void PgmMapView::reorderShapes() {
    const auto held = weak_from_this().lock();
    shapes_->reorder();
}

void PgmMapView::checkShapeImage() {
    const auto held = weak_from_this().lock();
    shapes_->checkImages();
}

bool PgmMapView::needReorderShapes() const noexcept {
    return shapes_->pendingWork().reorderShapes;
}

void PgmMapView::setNeedReorderShapes(bool need) noexcept {
    shapes_->pendingWork().reorderShapes = need;
}

bool PgmMapView::needUpdateShapes() const noexcept {
    return shapes_->pendingWork().updateShapes;
}

void PgmMapView::setNeedUpdateShapes(bool need) noexcept {
    shapes_->pendingWork().updateShapes = need;
}

bool PgmMapView::needCheckShapeImage() const noexcept {
    return shapes_->pendingWork().checkShapeImage;
}

void PgmMapView::setNeedCheckShapeImage(bool need) noexcept {
    shapes_->pendingWork().checkShapeImage = need;
}

void PgmMapView::triggerRepaint() {
    shapes_->triggerRepaint();
}

bool PgmMapView::didFinishLoadingMap() const noexcept {
    return shapes_->hasLoadedStyle();
}

const std::optional<std::string>& PgmMapView::first_symobol_id() const noexcept {
    return shapes_->firstSymbolLayer();
}

}  // namespace pelta
