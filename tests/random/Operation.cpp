#include "Operation.h"

#include <algorithm>

#include "Kinds.h"

namespace pelta::random {

namespace {

constexpr std::uint32_t fewestOperations = 60;
constexpr std::uint32_t moreOperations = 240;

std::vector<OperationKind> collectKinds() {
    std::vector<OperationKind> all;
    for (const auto& part : {shapeOperations(), lookOperations(), mapOperations(), cameraOperations(),
                             inputOperations(), clusterOperations()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// Calls `text` and `argument` for what stands between and inside the braces of the words, in their order.
template <class Text, class Argument>
void readWords(std::string_view words, Text&& text, Argument&& argument) {
    while (!words.empty()) {
        const auto open = words.find('{');
        text(words.substr(0, open));
        if (open == std::string_view::npos) {
            return;
        }
        const auto close = words.find('}', open);
        argument(words.substr(open + 1, close - open - 1));
        words.remove_prefix(close + 1);
    }
}

std::uint32_t weightInCallbacks(const OperationKind& kind) {
    constexpr std::uint32_t oftenness = 8;
    if (kind.inCallbacks == InCallbacks::never || kind.words.find("{operation}") != std::string_view::npos) {
        return 0;
    }
    return kind.weight * (kind.inCallbacks == InCallbacks::often ? oftenness : 1);
}

template <class WeightOf>
const OperationKind& drawKind(Random& random, WeightOf weightOf) {
    std::uint32_t sum = 0;
    for (const auto& kind : operationKinds()) {
        sum += std::invoke(weightOf, kind);
    }
    std::uint32_t rest = random.below(sum);
    for (const auto& kind : operationKinds()) {
        const std::uint32_t weight = std::invoke(weightOf, kind);
        if (rest < weight) {
            return kind;
        }
        rest -= weight;
    }
    return operationKinds().back();
}

std::string_view firstPlaceholder(const OperationKind& kind) {
    const auto open = std::min(kind.words.find('{'), kind.words.size());
    return kind.words.substr(open, kind.words.find('}') - open);
}

Operation drawArguments(const OperationKind& kind, Random& random);

/// What a callback of `outer` does, half the time to the very object that it is a callback of.
Operation drawInner(const Operation& outer, Random& random) {
    Operation inner = drawArguments(drawKind(random, weightInCallbacks), random);
    if (random.below(2) == 0 && firstPlaceholder(*inner.kind) == firstPlaceholder(*outer.kind)) {
        inner.arguments[0] = outer.arguments[0];
    }
    return inner;
}

Operation drawArguments(const OperationKind& kind, Random& random) {
    Operation operation;
    operation.kind = &kind;
    std::size_t place = 0;
    const auto draw = [&](std::string_view name) {
        if (name == innerOperation) {
            operation.inner = std::make_shared<Operation>(drawInner(operation, random));
        } else {
            operation.arguments[place++] = random.below(placeholderNamed(name).count);
        }
    };
    readWords(
        kind.words, [](std::string_view) {}, draw);
    return operation;
}

}  // namespace

std::span<const OperationKind> operationKinds() {
    static const std::vector<OperationKind> kinds = collectKinds();
    return kinds;
}

Operations drawOperations(std::uint64_t seed) {
    Random random(seed);
    Operations operations;
    const std::uint32_t count = fewestOperations + random.below(moreOperations);
    const auto appears = std::find_if(operationKinds().begin(), operationKinds().end(), [](const auto& kind) {
        return kind.words.starts_with("{map} appears");
    });
    operations.push_back(drawArguments(*appears, random));
    while (operations.size() < count) {
        operations.push_back(drawArguments(drawKind(random, &OperationKind::weight), random));
    }
    return operations;
}

std::string describe(const Operation& operation) {
    std::string words;
    std::size_t place = 0;
    const auto addText = [&](std::string_view text) { words += text; };
    const auto addArgument = [&](std::string_view name) {
        words += name == innerOperation ? describe(*operation.inner)
                                        : placeholderNamed(name).words(operation.arguments[place++]);
    };
    readWords(operation.kind->words, addText, addArgument);
    return words;
}

}  // namespace pelta::random
