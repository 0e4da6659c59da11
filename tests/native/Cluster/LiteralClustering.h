#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include <pelta/Cluster/PQTPointQuadTree.h>
#include <pelta/Cluster/PgmClusterAlgorithm.h>

/// @file
/// The rules of the quad tree and of clustering, step by step and without regard to speed: what the library's
/// own arrays are measured against.

namespace pelta::literal {

/// Where an item lies in the tree.
[[nodiscard]] PQTPoint project(CLLocationCoordinate2D coordinate);

/// The quad tree as nodes that own four nodes or a list.
template <class Item>
class QuadTree {
 public:
    struct Entry {
        PQTPoint point;
        Item item;
    };

    void add(PQTPoint point, Item item) {
        if (isAcceptable(point)) {
            add(root_, {point, std::move(item)}, whole, 0);
        }
    }

    bool remove(PQTPoint point) { return isAcceptable(point) && remove(root_, point, whole); }

    std::vector<Item> search(const PQTBounds& query) const {
        std::vector<Item> results;
        search(root_, query, whole, results);
        return results;
    }

    void clear() { root_ = Node(); }

 private:
    static constexpr PQTBounds whole{-1, -1, 1, 1};

    struct Node {
        std::unique_ptr<std::array<Node, 4>> children;  // top right, top left, bottom right, bottom left
        std::vector<Entry> items;
    };

    static bool isAcceptable(PQTPoint p) { return p.x >= -1 && p.x <= 1 && p.y >= -1 && p.y <= 1; }

    static std::size_t quadrant(PQTPoint point, const PQTBounds& b) {
        const bool isTop = point.y > (b.minY + b.maxY) * 0.5;
        const bool isRight = point.x > (b.minX + b.maxX) * 0.5;
        return isTop ? (isRight ? 0 : 1) : (isRight ? 2 : 3);
    }

    static PQTBounds boundsOf(std::size_t child, const PQTBounds& b) {
        const double midX = (b.minX + b.maxX) * 0.5;
        const double midY = (b.minY + b.maxY) * 0.5;
        const std::array<PQTBounds, 4> all{{{midX, midY, b.maxX, b.maxY},
                                            {b.minX, midY, midX, b.maxY},
                                            {midX, b.minY, b.maxX, midY},
                                            {b.minX, b.minY, midX, midY}}};
        return all[child];
    }

    static void add(Node& node, Entry entry, const PQTBounds& own, int depth) {
        if (node.items.size() > 63 && depth < 30) {
            node.children = std::make_unique<std::array<Node, 4>>();
            for (Entry& item : std::exchange(node.items, {})) {
                add(node, std::move(item), own, depth);
            }
        }
        if (node.children == nullptr) {
            node.items.push_back(std::move(entry));
            return;
        }
        const std::size_t child = quadrant(entry.point, own);
        add((*node.children)[child], std::move(entry), boundsOf(child, own), depth + 1);
    }

    static bool remove(Node& node, PQTPoint point, const PQTBounds& own) {
        if (node.children != nullptr) {
            const std::size_t child = quadrant(point, own);
            return remove((*node.children)[child], point, boundsOf(child, own));
        }
        for (auto entry = node.items.begin(); entry != node.items.end(); ++entry) {
            if (entry->point == point) {
                node.items.erase(entry);
                return true;
            }
        }
        return false;
    }

    static void search(const Node& node, const PQTBounds& q, const PQTBounds& own,
                       std::vector<Item>& results) {
        for (const Entry& entry : node.items) {
            const PQTPoint p = entry.point;
            if (q.minX <= p.x && p.x <= q.maxX && q.minY <= p.y && p.y <= q.maxY) {
                results.push_back(entry.item);
            }
        }
        for (std::size_t child = 0; node.children != nullptr && child < 4; ++child) {
            search((*node.children)[child], q, boundsOf(child, own), results);
        }
    }

    Node root_;
};

struct Cluster {
    CLLocationCoordinate2D position;
    std::vector<std::shared_ptr<PgmClusterItem>> items;
};

/// Clustering with hash maps and lists that items are searched in and taken out of.
class Algorithm {
 public:
    std::uint64_t minClusteringCount = 2;
    std::uint64_t maxDistanceBetweenItems = 200;

    void add(const std::shared_ptr<PgmClusterItem>& item);
    void remove(const std::shared_ptr<PgmClusterItem>& item);
    void clear();
    [[nodiscard]] std::vector<Cluster> clustersAtZoom(float zoom) const;

 private:
    std::vector<std::shared_ptr<PgmClusterItem>> items_;
    QuadTree<std::shared_ptr<PgmClusterItem>> tree_;
};

}  // namespace pelta::literal
