#pragma once

#include "bindings/table.h"
#include "tests/runtime/sample_sdk.h"

/// The sample SDK, bound with the words that bind the real one.
namespace pedflux::jni {

template <class Class>
Class sum(Class const* self, Class const& other) {
    return {self->GetX() + other.GetX(), self->GetZ() + other.GetZ()};
}

CLASS(Exception)
CONSTRUCTOR(Exception, std::string const&)
GET(Exception, Message)

CLASS(Spot)
CONSTRUCTOR_OVERLOAD(Spot, 0)
CONSTRUCTOR_OVERLOAD(Spot, 1, double, double)
COPY_CONSTRUCTOR(Spot, 2)
PROPERTY(Spot, X)
CONSTANT(Spot, ORIGIN)
CONSTANT(Spot, FAR, AWAY)
EXTENSION(Spot, plus, sum, Spot const&)

CLASS(Label)
CONSTRUCTOR(Label, std::string const&)
GET(Label, Text)

CLASS(Station)
GET(Station, TypeId)

CLASS(Desk, Station)
CONSTRUCTOR_OVERLOAD(Desk, 0, int)
COPY_CONSTRUCTOR(Desk, 1)
GET(Desk, TypeId)
GET(Desk, Floor)
GET(Desk, Seats)
METHOD(Desk, clone, Clone)
OVERLOAD(Desk, create, 0, Create, int)
OVERLOAD(Desk, create, 1, Create, std::string const&)

CLASS(Probe)
CONSTRUCTOR(Probe)
METHOD(Probe, takeBoolean, Take<bool>)
METHOD(Probe, takeInt, Take<int>)
METHOD(Probe, takeFloat, Take<float>)
METHOD(Probe, takeDouble, Take<double>)
METHOD(Probe, takeChar, Take<char>)
METHOD(Probe, takeUnsigned, Take<unsigned int>)
METHOD(Probe, takeMood, Take<Mood>)
METHOD(Probe, takeText, Take<std::string const&>)
METHOD(Probe, takeTextByValue, Take<std::string>)
METHOD(Probe, takeTexts, Take<std::vector<std::string> const&>)
METHOD(Probe, takeInts, Take<std::vector<int> const&>)
METHOD(Probe, takeDoubles, Take<std::vector<double> const&>)
METHOD(Probe, takeLabel, Take<Label const&>)
METHOD(Probe, takeLabelReference, Take<Label&>)
METHOD(Probe, takeLabelByValue, Take<Label>)
METHOD_CONST(Probe, takeLabelConst, Take<Label>)
METHOD(Probe, takeDesk, Take<Desk const&>)
METHOD(Probe, takeDeskByValue, Take<Desk>)
METHOD_CONST(Probe, takeDeskConst, Take<Desk>)
METHOD(Probe, takeShared, Take<std::shared_ptr<Desk> const&>)
METHOD(Probe, takeSharedByValue, Take<std::shared_ptr<Desk>>)
METHOD(Probe, takeLabels, Take<std::vector<Label> const&>)
METHOD(Probe, takeDesks, Take<std::vector<std::shared_ptr<Desk>> const&>)
METHOD(Probe, move, Move)
METHOD(Probe, replace, Replace)
METHOD(Probe, mix, Mix)
METHOD(Probe, add, Add)
METHOD(Probe, doNothing, DoNothing)
METHOD(Probe, rememberSelf, RememberSelf)
METHOD(Probe, giveBoolean, Give<bool>)
METHOD(Probe, giveInt, Give<int>)
METHOD(Probe, giveFloat, Give<float>)
METHOD(Probe, giveDouble, Give<double>)
METHOD(Probe, giveUnsigned, Give<unsigned int>)
METHOD(Probe, giveMood, Give<Mood>)
METHOD(Probe, giveText, Give<std::string>)
METHOD(Probe, giveTexts, Give<std::vector<std::string>>)
METHOD(Probe, giveInts, Give<std::vector<int>>)
METHOD(Probe, giveDoubles, Give<std::vector<double>>)
METHOD(Probe, giveSpot, Give<Spot>)
METHOD(Probe, giveLabel, Give<Label>)
METHOD(Probe, giveShared, Give<std::shared_ptr<Desk>>)
METHOD(Probe, giveDesk, Give<Desk>)
METHOD(Probe, giveLabels, Give<std::vector<Label>>)
METHOD(Probe, giveDesks, Give<std::vector<std::shared_ptr<Desk>>>)

}  // namespace pedflux::jni
