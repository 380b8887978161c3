#include "tests/runtime/sample_sdk.h"

#include <new>
#include <utility>

namespace pedflux {

Exception::~Exception() = default;

Spot const Spot::ORIGIN{};
Spot const Spot::FAR_AWAY{1e6, 1e6};

Count Label::count;
Count Desk::count;
std::optional<std::string> Probe::failure;
bool Probe::out_of_memory = false;
void const volatile* Probe::remembered_self = nullptr;

Label::Label(std::string const& text) : text_(text) {
    if (text.empty()) throw Exception("a label needs a text");
    ++count.alive;
}
Label::Label(Label const& other) : text_(other.text_) {
    ++count.alive;
    ++count.copied;
}
Label::Label(Label&& other) noexcept : text_(std::move(other.text_)) {
    ++count.alive;
    ++count.moved;
}
Label& Label::operator=(Label const& other) = default;

Desk::Desk(int seats) : seats_(seats) {
    if (seats < 0) throw Exception(jni::test::joined("a desk cannot have ", seats, " seats"));
    ++count.alive;
}
Desk::Desk(Desk const& other) : Station(other), seats_(other.seats_) {
    ++count.alive;
    ++count.copied;
}

std::shared_ptr<Desk> Desk::Create(int seats) { return seats ? std::make_shared<Desk>(seats) : nullptr; }
std::shared_ptr<Desk> Desk::Create(std::string const& name) {
    return std::make_shared<Desk>(static_cast<int>(name.size()));
}
std::shared_ptr<Station> Desk::Clone() const { return seats_ ? std::make_shared<Desk>(*this) : nullptr; }

std::vector<double> Probe::Mix(std::vector<Label> const& labels, std::string const& text, Spot const& spot, Label label,
                               std::vector<int> const& numbers, Desk const& desk, bool flag) {
    Happen("mixed " + Describe(labels) + ", " + Describe(text) + ", " + Describe(spot) + ", " + Describe(label) + ", " +
           Describe(numbers) + ", " + Describe(desk) + ", " + Describe(flag));
    return {0.5, 1.5};
}

int Probe::Add(int first, std::vector<std::shared_ptr<Desk>> const& desks, int second) {
    Happen("added to " + Describe(desks));
    return first + second;
}

void Probe::RememberSelf() { remembered_self = this; }

void Probe::Happen(std::string const& what) {
    jni::test::add_to_trace("SDK " + what);
    if (out_of_memory) throw std::bad_alloc();
    if (failure) throw Exception(*failure);
}

}  // namespace pedflux
