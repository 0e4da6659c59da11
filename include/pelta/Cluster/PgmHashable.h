#pragma once

#include <cstddef>
#include <functional>
#include <memory>

/// @file
/// Equality of objects as the library's dictionaries see it.

namespace pelta {

/// For an object that is to count as the same as another, equal one. Objects that do not implement it are the
/// same only as themselves.
class PgmHashable {
 public:
    virtual ~PgmHashable() = default;
    /// Equal objects must have equal hashes.
    [[nodiscard]] virtual std::size_t hash() const = 0;
    /// Must be an equivalence between all hashable objects that meet in one place.
    [[nodiscard]] virtual bool equals(const PgmHashable& other) const = 0;
};

/// Key of an object in dictionaries and sets.
///
/// Two keys are equal when both objects are `PgmHashable` and equal by their own rule; otherwise when they
/// wrap the very same object. The key keeps its object alive.
class WrappingDictionaryKey {
 public:
    /// Wraps an object of any class with virtual functions. A null object is equal to null only.
    template <class Object>
    explicit WrappingDictionaryKey(std::shared_ptr<Object> object)
        : identity_(dynamic_cast<const void*>(object.get())),
          hashable_(dynamic_cast<const PgmHashable*>(object.get())),
          object_(std::move(object)) {}

    /// The object's own hash when it is hashable, otherwise that of its identity.
    [[nodiscard]] std::size_t hash() const {
        return hashable_ != nullptr ? hashable_->hash() : std::hash<const void*>{}(identity_);
    }

    friend bool operator==(const WrappingDictionaryKey& a, const WrappingDictionaryKey& b) {
        if (a.hashable_ != nullptr && b.hashable_ != nullptr) {
            return a.hashable_->equals(*b.hashable_);
        }
        return a.identity_ == b.identity_;
    }

 private:
    const void* identity_;         // of the complete object, whichever base it was wrapped by
    const PgmHashable* hashable_;  // null when the object is not
    std::shared_ptr<const void> object_;
};

}  // namespace pelta

/// Makes the key usable in the standard library's unordered containers.
template <>
struct std::hash<pelta::WrappingDictionaryKey> {
    /// The key's own hash.
    std::size_t operator()(const pelta::WrappingDictionaryKey& key) const { return key.hash(); }
};
