// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Multidimensional scaling with pivots (after U. Brandes and C. Pich, "Eigensolver methods for
// progressive multidimensional scaling of large data", 2006).
//
// Classical scaling finds coordinates whose distances approximate a given matrix of distances: the
// squared distances are centered in both directions, and the two leading eigenvectors of the
// result give x and y. Taking the distances from all nodes to a few pivots only, the matrix has a
// row a node and a column a pivot; the leading right singular vectors, found by power iteration on
// the small matrix of the columns' products, project the rows into the plane. Pivots are chosen far
// from each other: each next one is a node furthest from all before it.
//
// Cost: one breadth-first search a pivot, and pivots^2 products a node.

#include "model/PivotScaling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qxdraw {

namespace {

constexpr std::size_t MostPivots = 60;
constexpr int PowerIterations = 100;

using Column = std::vector<double>;

std::vector<int> distancesFrom(const Adjacency& adjacency, int start) {
    std::vector<int> distance(adjacency.size(), -1);
    std::vector<int> queue{start};
    distance[static_cast<std::size_t>(start)] = 0;
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const auto node = static_cast<std::size_t>(queue[next]);
        for (const int neighbour : adjacency[node]) {
            int& d = distance[static_cast<std::size_t>(neighbour)];
            if (d < 0) {
                d = distance[node] + 1;
                queue.push_back(neighbour);
            }
        }
    }
    return distance;
}

/// Squared distances, a column a pivot.
std::vector<Column> pivotColumns(const Adjacency& adjacency) {
    const std::size_t count = std::min(MostPivots, adjacency.size());
    std::vector<int> nearest(adjacency.size(), std::numeric_limits<int>::max());
    std::vector<Column> columns;
    int pivot = 0;
    for (std::size_t k = 0; k < count; ++k) {
        const std::vector<int> distance = distancesFrom(adjacency, pivot);
        Column& column = columns.emplace_back(adjacency.size());
        for (std::size_t i = 0; i < distance.size(); ++i) {
            column[i] = static_cast<double>(distance[i]) * distance[i];
            nearest[i] = std::min(nearest[i], distance[i]);
        }
        pivot =
            static_cast<int>(std::max_element(nearest.begin(), nearest.end()) - nearest.begin());
    }
    return columns;
}

double mean(const Column& values) {
    double sum = 0;
    for (const double value : values) {
        sum += value;
    }
    return sum / static_cast<double>(values.size());
}

/// Takes the means of rows and columns away, and halves and negates, as scaling asks.
void centerTwice(std::vector<Column>& columns) {
    for (Column& column : columns) {
        const double average = mean(column);
        for (double& value : column) {
            value = (average - value) / 2;
        }
    }
    for (std::size_t row = 0; row < columns.front().size(); ++row) {
        double sum = 0;
        for (const Column& column : columns) {
            sum += column[row];
        }
        for (Column& column : columns) {
            column[row] -= sum / static_cast<double>(columns.size());
        }
    }
}

double dot(const Column& a, const Column& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += a[i] * b[i];
    }
    return sum;
}

std::vector<Column> products(const std::vector<Column>& columns) {
    std::vector<Column> result(columns.size(), Column(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        for (std::size_t j = 0; j <= i; ++j) {
            result[i][j] = result[j][i] = dot(columns[i], columns[j]);
        }
    }
    return result;
}

void normalize(Column& vector) {
    const double length = std::sqrt(dot(vector, vector));
    for (double& value : vector) {
        value = length > 0 ? value / length : 0;
    }
}

/// Leading eigenvector of a symmetric matrix, orthogonal to `other` unless that is empty; zero when
/// the matrix vanishes on all such vectors, as the one of a path does.
Column leadingVector(const std::vector<Column>& matrix, const Column& other) {
    constexpr double Negligible = 1e-9;
    Column vector(matrix.size());
    for (std::size_t i = 0; i < vector.size(); ++i) {
        vector[i] = std::sin(1.0 + 2.3 * static_cast<double>(i));  // any start that favours nothing
    }
    for (int round = 0; round < PowerIterations; ++round) {
        Column next(vector.size());
        for (std::size_t i = 0; i < next.size(); ++i) {
            next[i] = dot(matrix[i], vector);
        }
        if (!other.empty()) {
            const double along = dot(next, other);
            for (std::size_t i = 0; i < next.size(); ++i) {
                next[i] -= along * other[i];
            }
        }
        if (std::sqrt(dot(next, next)) < Negligible * matrix.front().front()) {
            return Column(matrix.size());
        }
        normalize(next);
        vector = std::move(next);
    }
    return vector;
}

/// Makes the average edge one unit long; nothing changes when all nodes share one place.
void scaleToEdges(std::vector<DocumentPoint>& places, const Adjacency& adjacency) {
    double sum = 0;
    double ends = 0;
    for (std::size_t i = 0; i < adjacency.size(); ++i) {
        for (const int j : adjacency[i]) {
            const DocumentPoint& other = places[static_cast<std::size_t>(j)];
            sum += std::hypot(places[i].x - other.x, places[i].y - other.y);
            ends += 1;
        }
    }
    if (sum > 0) {
        for (DocumentPoint& place : places) {
            place.x *= ends / sum;
            place.y *= ends / sum;
        }
    }
}

}  // namespace

std::vector<DocumentPoint> scaleByPivots(const Adjacency& adjacency) {
    std::vector<DocumentPoint> places(adjacency.size());
    if (adjacency.size() < 2) {
        return places;
    }
    std::vector<Column> columns = pivotColumns(adjacency);
    centerTwice(columns);
    const std::vector<Column> matrix = products(columns);
    const Column first = leadingVector(matrix, {});
    const Column second = leadingVector(matrix, first);
    for (std::size_t k = 0; k < columns.size(); ++k) {
        for (std::size_t i = 0; i < places.size(); ++i) {
            places[i].x += columns[k][i] * first[k];
            places[i].y += columns[k][i] * second[k];
        }
    }
    scaleToEdges(places, adjacency);
    return places;
}

}  // namespace qxdraw
