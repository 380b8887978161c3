#pragma once

#include "runtime/handles.h"
#include "tests/runtime/trace.h"

#include <pedflux/exception.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

/// A small SDK with every kind of class, parameter and result, each operation of which leaves a line in the trace.
namespace pedflux {

enum class Mood : int { CALM = 0, BUSY = 7 };

/// A value class that is trivially destructible.
class Spot {
  public:
    static Spot const ORIGIN;
    static Spot const FAR_AWAY;

    Spot() = default;
    Spot(double x, double z) : x_(x), z_(z) {}
    double GetX() const { return x_; }
    void SetX(double x) { x_ = x; }
    double GetZ() const { return z_; }

  private:
    double x_ = 0;
    double z_ = 0;
};

/// Counts the objects of one class.
struct Count {
    int alive = 0;
    int copied = 0;
    int moved = 0;
};

/// A value class with a destructor.
class Label {
  public:
    static Count count;

    Label() : Label("default") {}
    explicit Label(std::string const& text);
    Label(Label const& other);
    Label(Label&& other) noexcept;
    Label& operator=(Label const& other);
    Label& operator=(Label&& other) = delete;
    ~Label() { --count.alive; }
    std::string GetText() const { return text_; }

  private:
    std::string text_;
};

/// A shared class that is a base.
class Station {
  public:
    Station() = default;
    Station(Station const&) = default;
    Station& operator=(Station const&) = delete;
    virtual ~Station() = default;
    virtual int GetTypeId() const { return 1; }
    virtual std::shared_ptr<Station> Clone() const { return nullptr; }
    int GetFloor() const { return 4; }
};

/// A shared class with a base.
class Desk : public Station {
  public:
    static Count count;

    static std::shared_ptr<Desk> Create(int seats);
    static std::shared_ptr<Desk> Create(std::string const& name);

    explicit Desk(int seats = 2);
    Desk(Desk const& other);
    Desk& operator=(Desk const&) = delete;
    ~Desk() override { --count.alive; }
    int GetTypeId() const override { return 2; }
    std::shared_ptr<Station> Clone() const override;
    int GetSeats() const { return seats_; }

  private:
    int seats_;
};

/// A shared class whose operations take and give everything that crosses.
class Probe {
  public:
    /// The message of the exception that every operation throws, if there is one.
    static std::optional<std::string> failure;
    /// Every operation throws what is not the SDK's.
    static bool out_of_memory;
    /// What `Give<R>` gives.
    template <class R>
    static inline R gift{};

    template <class P>
    void Take(P given) {
        Happen("took " + Describe(given));
    }
    template <class R>
    R Give() const {
        Happen("gave");
        return gift<R>;
    }
    void DoNothing() { Happen("did nothing"); }
    void Move(Spot& spot) {
        spot.SetX(spot.GetX() + 1);
        Happen("moved");
    }
    void Replace(std::shared_ptr<Desk>& desk) {
        Happen("replaced " + Describe(desk));
        desk = std::make_shared<Desk>(99);
    }
    /// Every checked and every converted kind in one list.
    std::vector<double> Mix(std::vector<Label> const& labels, std::string const& text, Spot const& spot, Label label,
                            std::vector<int> const& numbers, Desk const& desk, bool flag);
    static int Add(int first, std::vector<std::shared_ptr<Desk>> const& desks, int second);
    void RememberSelf();
    static void const volatile* remembered_self;

  private:
    static void Happen(std::string const& what);

    static std::string Describe(bool given) { return given ? "true" : "false"; }
    static std::string Describe(char given) { return {'\'', given, '\''}; }
    template <class Number>
    static std::string Describe(Number given) requires std::is_arithmetic_v<Number> {
        return jni::test::joined(given);
    }
    static std::string Describe(Mood given) { return jni::test::joined("mood ", static_cast<int>(given)); }
    static std::string Describe(std::string const& given) { return '"' + given + '"'; }
    static std::string Describe(Spot const& given) {
        return jni::test::joined("spot ", given.GetX(), ' ', given.GetZ());
    }
    static std::string Describe(Label const& given) { return "label " + given.GetText(); }
    static std::string Describe(Desk const& given) { return jni::test::joined("desk ", given.GetSeats()); }
    static std::string Describe(std::shared_ptr<Desk> const& given) {
        return given ? jni::test::joined("shared ", Describe(*given), ", users ", given.use_count()) : "no desk";
    }
    template <class Element>
    static std::string Describe(std::vector<Element> const& given) {
        std::string text = "[";
        for (auto const& element : given) text += (text.size() > 1 ? ", " : "") + Describe(element);
        return text + ']';
    }
};

}  // namespace pedflux

template <>
inline constexpr bool pedflux::jni::crosses_by_value<pedflux::Spot> = true;
template <>
inline constexpr bool pedflux::jni::crosses_by_value<pedflux::Label> = true;
