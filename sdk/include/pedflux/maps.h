#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/vectors.h>

#include <memory>
#include <vector>

namespace pedflux {

namespace engine {
struct Raster;
}

class ColorMap2d;
class Map2d;
class ValueMap2d;

/// What `Map::GetMapTypeId` returns.
enum class MapType : int {
    VALUES = 1,
    COLORS = 2,
};

/// What a map query found out about one surface: a floor or another walkable object.
class PEDFLUX_API Map {
  public:
    Map(Map const&) = delete;
    Map& operator=(Map const&) = delete;
    virtual ~Map();

    /// A `MapType`.
    virtual int GetMapTypeId() = 0;
    /// The side of a pixel in metres.
    virtual double GetPixelSize() = 0;
    /// The object whose surface the map lies on.
    virtual GlobalId GetSurfaceId() = 0;
    /// The map itself; empty for a map that is no grid in the plan.
    virtual std::shared_ptr<Map2d> AsMap2d() = 0;

  protected:
    Map() = default;
};

/// A grid of square pixels over the plan of a surface. Pixel (0, 0) lies at the smallest x and z; the pixel's x counts
/// along the x axis and its y along the z axis. The index of pixel (x, y) is y * GetXPixelCount() + x.
///
/// A pixel is valid when it belongs to the grid. The map has it when its centre lies on the surface where people can
/// walk. Positions are taken in the plan, whatever their y, and must be finite; everything else about a pixel that is
/// not valid throws Exception.
class PEDFLUX_API Map2d : public Map, public std::enable_shared_from_this<Map2d> {
  public:
    ~Map2d() override;

    double GetPixelSize() override;
    GlobalId GetSurfaceId() override;
    std::shared_ptr<Map2d> AsMap2d() override;
    virtual bool HasPixel(int x, int y);
    virtual bool HasPixelAtIndex(int index);
    virtual bool HasPixelAtPosition(Vec3d const& position);
    virtual bool IsValidPixel(int x, int y);
    virtual bool IsValidPixelAtIndex(int index);
    virtual bool IsValidPixelAtPosition(Vec3d const& position);
    /// -1 beside the grid.
    virtual int GetPixelXIndexAtPosition(Vec3d const& position);
    /// -1 beside the grid.
    virtual int GetPixelYIndexAtPosition(Vec3d const& position);
    /// The number of pixels of the grid, whether the map has them or not.
    virtual int GetPixelCount();
    virtual int GetXPixelCount();
    virtual int GetYPixelCount();
    /// The centre on the surface; where the map has no pixel, at the height of the lowest point of the surface.
    virtual Vec3d GetCenterOfPixel(int x, int y);
    /// The extent of the grid along the x axis, in metres.
    virtual double GetXSize();
    /// The extent of the grid along the z axis, in metres.
    virtual double GetYSize();
    /// The map itself when it holds values; empty otherwise.
    virtual std::shared_ptr<ValueMap2d> AsValueMap2d();
    /// The map itself when it holds colours; of a map of values that has a colour function, its picture in those
    /// colours; empty otherwise.
    virtual std::shared_ptr<ColorMap2d> AsColorMap2d();

  protected:
    explicit Map2d(std::shared_ptr<engine::Raster const> raster);

    std::shared_ptr<engine::Raster const> raster_;
};

/// A pixel and its colour.
class PEDFLUX_API PixelColor {
  public:
    /// Pixel (0, 0), opaque black.
    PixelColor() = default;
    PixelColor(int x, int y, Color const& color) : x_(x), y_(y), color_(color) {}

    int GetX();
    int GetY();
    Color GetColor();

  private:
    int x_ = 0;
    int y_ = 0;
    Color color_;
};

/// A pixel and its value.
class PEDFLUX_API PixelValue {
  public:
    /// Pixel (0, 0), value 0.
    PixelValue() = default;
    PixelValue(int x, int y, double value) : x_(x), y_(y), value_(value) {}
    PixelValue(PixelValue const&) = default;
    PixelValue& operator=(PixelValue const&) = default;
    ~PixelValue();

    int GetX();
    int GetY();
    double GetValue();

  private:
    int x_ = 0;
    int y_ = 0;
    double value_ = 0;
};

/// A map of colours. A pixel that the map does not have is transparent.
class PEDFLUX_API ColorMap2d : public Map2d {
  public:
    /// Used by the library. One colour for each pixel of the raster.
    ColorMap2d(std::shared_ptr<engine::Raster const> raster, std::vector<Color> colors);

    int GetMapTypeId() override;
    std::shared_ptr<ColorMap2d> AsColorMap2d() override;

    Color GetColorAtIndex(int index);
    Color GetColorAtPixel(int x, int y);
    Color GetColorAtPosition(Vec3d const& position);
    /// The pixels that the map has, row by row.
    std::vector<PixelColor> GetPixelColors();

  private:
    std::vector<Color> colors_;
};

class ColorFunction;

/// A map of numbers, in the unit of the query. The value of a pixel that the map does not have is NaN, and so is that
/// of one about which the query can say nothing; in a picture of the map both are transparent.
class PEDFLUX_API ValueMap2d : public Map2d {
  public:
    /// Used by the library. One value for each pixel of the raster; the colour function may be empty.
    ValueMap2d(std::shared_ptr<engine::Raster const> raster, std::vector<float> values,
               std::shared_ptr<ColorFunction> colorFunction);

    int GetMapTypeId() override;
    std::shared_ptr<ValueMap2d> AsValueMap2d() override;
    std::shared_ptr<ColorMap2d> AsColorMap2d() override;

    double GetValueAtIndex(int index) const;
    double GetValueAtPixel(int x, int y) const;
    double GetValueAtPosition(Vec3d const& position) const;
    /// The pixels that the map has, row by row.
    std::vector<PixelValue> GetPixelValues();

  private:
    std::vector<float> values_;
    std::shared_ptr<ColorFunction> colorFunction_;
};

}  // namespace pedflux
