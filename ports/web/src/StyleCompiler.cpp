#include "StyleCompiler.h"

#include <algorithm>
#include <utility>

#include "FeatureJson.h"
#include "LayerJson.h"
#include "RunLayerJson.h"
#include "SortKeys.h"

namespace pelta {

void StyleCompiler::reset(const StyleDocument& document) {
    *this = StyleCompiler(drawsLiterally_);
    sourceNames_ = SourceNames(document);
    order_.reset(document);
}

std::string StyleCompiler::compile(const MLNStyle& style, const MLNStyleChanges& changes, double zoom) {
    calls_ = {};
    calls_.beginArray();
    order_.clearNew();
    takeRemovedLayers(changes.removedLayers);
    takeSources(style, changes);
    takeLayers(changes);
    if (needsPlan_ || changes.isLayerOrderChanged) {
        takeStack(style);
        replan(zoom);
    } else {
        updateTouched();
        writeSources();
    }
    writeRunProperties();
    writeLiteralProperties(changes);
    for (ModelLayer* layer : std::exchange(touched_, {})) {
        layer->isTouched = false;
    }
    removed_.clear();
    needsPlan_ = false;
    calls_.endArray();
    return calls_.take();
}

std::string StyleCompiler::recompile(double zoom) {
    calls_ = {};
    calls_.beginArray();
    order_.clearNew();
    replan(zoom);
    writeRunProperties();
    calls_.endArray();
    return calls_.take();
}

std::string StyleCompiler::removeRetiredLayers() {
    if (!order_.hasRetired()) {
        return {};
    }
    calls_ = {};
    calls_.beginArray();
    order_.removeRetired(calls_);
    calls_.endArray();
    return calls_.take();
}

// The model

void StyleCompiler::takeRemovedLayers(const std::vector<std::string>& identifiers) {
    order_.remove(calls_, identifiers);
    needsPlan_ = needsPlan_ || !identifiers.empty();
    for (const std::string& identifier : identifiers) {
        const auto known = layersByName_.find(identifier);
        if (known != layersByName_.end()) {
            ModelLayer& layer = *known->second;
            layersByName_.erase(known);
            withdraw(layer);
            setLiteral(layer, false);
            leavePlace(layer);
            const auto entry = layers_.find(layer.layer.get());
            removed_.push_back(std::move(entry->second));
            layers_.erase(entry);
        }
    }
}

void StyleCompiler::takeSources(const MLNStyle& style, const MLNStyleChanges& changes) {
    const auto take = [this](Source& source, const std::shared_ptr<const MLNShape>& contents) {
        source.isChanged = true;
        for (ShapePlace* place : source.shapes.update(contents)) {
            for (ModelLayer* layer : place->layers) {
                readLayer(*layer);
            }
        }
    };
    for (const std::string& identifier : changes.removedSources) {
        if (style.sourceWithIdentifier(identifier) == nullptr) {
            Source& source = sources_[identifier];
            source.exists = false;
            take(source, nullptr);
            needsPlan_ = true;
        }
    }
    for (const auto& changed : changes.changedSources) {
        Source& source = sources_[changed->identifier()];
        source.exists = true;
        take(source, changed->shape());
    }
}

void StyleCompiler::takeLayers(const MLNStyleChanges& changes) {
    for (const auto& layer : changes.changedLayers) {
        const auto known = layers_.find(layer.get());
        if (known == layers_.end()) {
            entered(layer);
        } else {
            if ((layer->changes() & MLNStyleLayer::predicateChange) != 0) {
                withdraw(*known->second);
                leavePlace(*known->second);
                bindPlace(*known->second);
            }
            readLayer(*known->second);
        }
    }
}

ModelLayer& StyleCompiler::entered(const std::shared_ptr<MLNStyleLayer>& layer) {
    auto& entry = layers_[layer.get()];
    if (!entry) {
        entry = std::make_unique<ModelLayer>();
        entry->layer = layer;
        if (!layer->isFromDocument()) {
            entry->drawn = dynamic_cast<const MLNVectorStyleLayer*>(layer.get());
        }
        layersByName_.emplace(layer->identifier(), entry.get());
        bindPlace(*entry);
        readLayer(*entry);
        needsPlan_ = true;
    }
    return *entry;
}

void StyleCompiler::bindPlace(ModelLayer& layer) {
    if (layer.drawn != nullptr && layer.drawn->predicate().attribute == ShapeIndex::identifierAttribute) {
        layer.shapes = &sources_[layer.drawn->sourceIdentifier()].shapes;
        layer.place = &layer.shapes->enter(layer.drawn->predicate().value, layer);
    }
}

void StyleCompiler::leavePlace(ModelLayer& layer) {
    if (layer.place != nullptr) {
        layer.shapes->leave(*std::exchange(layer.place, nullptr), layer);
    }
}

bool StyleCompiler::isDrawnLiterally(const ModelLayer& layer) const {
    return drawsLiterally_ || layer.place == nullptr || layer.place->shapes.size() > 1;
}

void StyleCompiler::setLiteral(ModelLayer& layer, bool isLiteral) {
    if (layer.isLiteral == isLiteral) {
        return;
    }
    layer.isLiteral = isLiteral;
    needsPlan_ = true;
    if (layer.drawn != nullptr) {
        std::size_t& users = sources_[layer.drawn->sourceIdentifier()].literalLayers;
        users = isLiteral ? users + 1 : users - 1;
    }
}

void StyleCompiler::readLayer(ModelLayer& layer) {
    setLiteral(layer, isDrawnLiterally(layer));
    const MLNShape* shape = layer.isLiteral ? nullptr : layer.place->drawableShape();
    LayerValues values = shape ? reader_.read(*layer.drawn, *shape) : LayerValues{};
    if (layer.isLiteral && layer.layer->isVisible()) {
        values.sight = LayerSight::visible;
    }
    const bool isExtentNew = shape != nullptr && takeExtent(layer, *shape);
    needsPlan_ = needsPlan_ || isExtentNew || values.key != layer.values.key ||
                 values.sight != layer.values.sight || values.reach != layer.values.reach;
    const bool isAsSent = shape != nullptr && layer.sent.feature != nullptr &&
                          layer.sent.feature->revision == shape->revision() &&
                          differences(values.own, layer.sent.values) == 0;
    layer.values = std::move(values);
    if (!layer.isTouched && !isAsSent) {
        layer.isTouched = true;
        touched_.push_back(&layer);
    }
}

bool StyleCompiler::takeExtent(ModelLayer& layer, const MLNShape& shape) {
    if (layer.drawn->kind() == MLNStyleLayerKind::symbol || layer.extentRevision == shape.revision()) {
        return false;
    }
    layer.extentRevision = shape.revision();
    const Extent former = std::exchange(layer.extent, extentOf(shape));
    return !(layer.extent == former);
}

// Runs

void StyleCompiler::takeStack(const MLNStyle& style) {
    stack_.clear();
    stack_.reserve(style.layers().size());
    for (const auto& layer : style.layers()) {
        ModelLayer& model = entered(layer);
        model.rank = stack_.size();
        stack_.push_back(&model);
    }
}

void StyleCompiler::replan(double zoom) {
    planner_.plan(stack_, zoom);
    for (ModelLayer* layer : stack_) {
        if (layer->run == nullptr) {
            withdraw(*layer);
        }
    }
    updateRuns();
    const std::vector<std::string> wanted = wantedLayers();
    order_.removeOthers(calls_, wanted,
                        [this](const std::string& name) { return layersByName_.count(name) == 0; });
    writeSources();
    arrangeLayers(wanted);
}

RunSource& StyleCompiler::runSource(const ModelLayer& layer) {
    const std::string& identifier = layer.drawn->sourceIdentifier();
    const MLNShapeKind shape = *layer.place->drawableShape()->drawnKind();
    auto& sources = sources_[identifier].byKind;
    const auto known = sources.find(shape);
    return known != sources.end()
               ? known->second
               : sources.try_emplace(shape, sourceNames_.ofKind(identifier, shape), features_).first->second;
}

void StyleCompiler::withdraw(ModelLayer& layer) {
    if (layer.sent.feature != nullptr) {
        layer.sent.feature->source->withdraw(layer);
    }
}

void StyleCompiler::updateRuns() {
    for (const EngineLayer& layer : planner_.layers()) {
        if (layer.run != nullptr) {
            updateRun(*layer.run);
        }
    }
}

void StyleCompiler::updateRun(Run& run) {
    for (ModelLayer* member : run.members) {
        if (member->isTouched || member->sent.run != run.number) {
            noteVarying(*member);
        }
    }
    if (run.needsSortKeys) {
        assignSortKeys(run);
    }
    RunSource& source = runSource(*run.members.front());
    source.keepOrder(run);
    for (ModelLayer* member : run.members) {
        if (isStale(*member)) {
            source.send(*member);
        }
    }
}

void StyleCompiler::updateTouched() {
    for (ModelLayer* layer : touched_) {
        if (layer->run != nullptr && !runSource(*layer).order().staysInPlace(*layer)) {
            layer->run->needsSortKeys = true;
        }
    }
    for (ModelLayer* layer : touched_) {
        if (layer->run != nullptr && layer->run->needsSortKeys) {
            updateRun(*layer->run);
        } else if (layer->run != nullptr && layer->isTouched) {
            noteVarying(*layer);
            runSource(*layer).send(*layer);
        }
    }
}

void StyleCompiler::noteVarying(ModelLayer& layer) {
    Run& run = *layer.run;
    const PropertySet added = differences(layer.values.own, run.base) & ~run.varying;
    if (added == 0) {
        return;
    }
    run.unwritten |= added;
    if (run.members.size() > 1) {
        run.varying |= added;
        return;
    }
    for (std::size_t i = 0; i < propertyLimit; ++i) {
        if ((added & (PropertySet{1} << i)) != 0) {
            run.base[i] = layer.values.own[i];
        }
    }
}

// The engine

void StyleCompiler::writeSources() {
    for (auto& [identifier, source] : sources_) {
        writeWholeSource(sourceNames_.ofWhole(identifier), source);
        for (auto& [kind, runs] : source.byKind) {
            runs.writeChanges(calls_);
        }
    }
}

void StyleCompiler::writeWholeSource(const std::string& identifier, Source& source) {
    const bool isWanted = source.exists && source.literalLayers > 0;
    const bool isStale = std::exchange(source.isChanged, false) || !source.isSentWhole;
    if (isWanted && isStale) {
        source.features = featuresOf(source.shapes.contents().get());
        JsonWriter data;
        writeFeatures(data, source.features);
        if (source.isSentWhole) {
            beginSourceCall(calls_, identifier, "setData");
            calls_.raw(data.text());
        } else {
            beginStyleCall(calls_, "addSource");
            calls_.value(identifier);
            beginSource(calls_);
            calls_.raw(data.text());
            calls_.endObject();
            writeUnchecked(calls_);
        }
        calls_.endArray();
        source.isSentWhole = true;
    } else if (!isWanted && source.isSentWhole) {
        source.isSentWhole = false;
        beginStyleCall(calls_, "removeSource");
        calls_.value(identifier);
        calls_.endArray();
    }
}

std::vector<std::string> StyleCompiler::wantedLayers() const {
    std::vector<std::string> wanted;
    wanted.reserve(planner_.layers().size());
    for (const EngineLayer& layer : planner_.layers()) {
        wanted.push_back(layer.run ? runLayerIdentifier(*layer.run) : layer.literal->layer->identifier());
    }
    return wanted;
}

void StyleCompiler::arrangeLayers(const std::vector<std::string>& wanted) {
    const auto& layers = planner_.layers();
    order_.arrange(calls_, wanted, [&](std::size_t i) {
        if (layers[i].run != nullptr) {
            Run& run = *layers[i].run;
            run.unwritten = 0;
            const RunSource& source = runSource(*run.members.front());
            writeRunLayer(calls_, run, source.identifier(), source.order().sortKey(run));
        } else {
            const ModelLayer& layer = *layers[i].literal;
            writeLayer(calls_, *layer.layer,
                       sourceNames_.ofWhole(layer.drawn ? layer.drawn->sourceIdentifier() : std::string()));
        }
    });
}

void StyleCompiler::writeRunProperties() {
    for (const EngineLayer& layer : planner_.layers()) {
        if (layer.run != nullptr && layer.run->unwritten != 0) {
            writeRunLayerChanges(calls_, *layer.run);
            layer.run->unwritten = 0;
        }
    }
    for (auto& [identifier, source] : sources_) {
        for (auto& [kind, runs] : source.byKind) {
            runs.writeOrderChanges(calls_);
        }
    }
}

void StyleCompiler::writeLiteralProperties(const MLNStyleChanges& changes) {
    for (const auto& layer : changes.changedLayers) {
        const auto known = layers_.find(layer.get());
        if (known != layers_.end() && known->second->isLiteral && !order_.isNew(layer->identifier())) {
            writeLayerChanges(calls_, *layer, layer->changes());
        }
    }
}

}  // namespace pelta
