#pragma once

#include "eComponentId.hpp"
#include "eHookParameters.hpp"
#include "eIPAddress.hpp"
#include "eInterfaceTableHooks.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "eVLAN.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"

#include <any>
#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <type_traits>
#include <vector>

// The text of one argument of an observer operation.
template <class Value> std::string TextOf(Value const& value)
{
    if constexpr (std::is_same_v<Value, bool>)
        return value ? "true" : "false";
    else if constexpr (std::is_enum_v<Value>)
        return std::to_string(static_cast<long>(value));
    else if constexpr (std::is_integral_v<Value>)
        return std::to_string(value);
    else
        return "record";
}
inline std::string TextOf(std::string const& text)
{
    return text;
}
inline std::string TextOf(EIPAddress const& address)
{
    return address.GetAsString();
}
inline std::string TextOf(EMACAddress const& mac)
{
    return mac.GetAsString();
}
inline std::string TextOf(EUID const& id)
{
    return id.GetAsString();
}
std::string TextOf(EComponentId const& id);                         // "7.1.5"
std::string TextOf(EVLAN const& vlan);                              // "priority.cfi.id"
std::string TextOf(EVLANIPAddressTableItemProperties const& vlans); // "on[8193 100]", the tags in decimal
template <class Element> std::string TextOf(std::list<Element> const& list)
{
    return "[" + std::to_string(list.size()) + "]";
}
template <class Element> std::string TextOf(std::vector<Element> const& list)
{
    return "[" + std::to_string(list.size()) + "]";
}

/// What an observer was told.
class CallLog {
public:
    struct Call {
        std::string operation;
        void const* record;          // the one that changes
        std::string before;          // what it held in the call, as text
        std::string values;          // the further arguments, joined by ", "
        std::vector<std::any> given; // pointers to them; to be followed while the call lasts only
    };
    std::vector<Call> calls;
    std::function<void()> whenCalled; ///< Runs inside each call: what the record holds then is the value to look at.

    std::vector<std::string> Operations() const;
    void Clear() { calls.clear(); }

    /// From whenCalled: a further argument of this call, by its exact type.
    template <class Value> Value const& Argument(std::size_t index) const
    {
        return *std::any_cast<Value const*>(calls.back().given.at(index));
    }

protected:
    CallLog() = default;
    CallLog(CallLog const&) = default;
    CallLog& operator=(CallLog const&) = default;
    ~CallLog() = default;

    template <class Record, class... Value>
    void Note(char const* operation, Record const& record, Value const&... value)
    {
        std::string values;
        ((values += (values.empty() ? "" : ", ") + TextOf(value)), ...);
        calls.push_back({operation, &record, TextOf(record), values, {std::any(&value)...}});
        if (whenCalled) whenCalled();
    }
};

/// An observer of interface tables that writes down every call.
class Recorder : public EInterfaceTableHooks, public CallLog {
public:
#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        Note(#operation, EHOOK_ARGUMENTS(__VA_ARGS__));                                                                \
    }
#include "eInterfaceTableHooks.def"
};
