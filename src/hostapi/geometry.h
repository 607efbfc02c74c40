// geometry.h: points and arrays as the object model takes them.
#pragma once

#include <vector>

struct AcGePoint2d {
    double x = 0.0, y = 0.0;
    AcGePoint2d() = default;
    AcGePoint2d(double px, double py) : x(px), y(py) {}
};

struct AcGePoint3d {
    double x = 0.0, y = 0.0, z = 0.0;
    AcGePoint3d() = default;
    AcGePoint3d(double px, double py, double pz) : x(px), y(py), z(pz) {}
};

// Array with an initial physical length and a growth step; both are hints.
template <class T>
class AcArray
{
public:
    explicit AcArray(int physical_length = 0, int grow_length = 8)
    {
        (void)grow_length;
        items_.reserve(static_cast<std::size_t>(physical_length));
    }
    int length() const { return static_cast<int>(items_.size()); }
    bool isEmpty() const { return items_.empty(); }
    void append(const T& item) { items_.push_back(item); }
    const T& operator[](int index) const { return items_[static_cast<std::size_t>(index)]; }
    T& operator[](int index) { return items_[static_cast<std::size_t>(index)]; }

private:
    std::vector<T> items_;
};

using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGeDoubleArray = AcArray<double>;

struct AcDbExtents {
    AcGePoint3d low, high;
    AcGePoint3d minPoint() const { return low; }
    AcGePoint3d maxPoint() const { return high; }
};
