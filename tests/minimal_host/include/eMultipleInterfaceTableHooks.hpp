#pragma once

#include "eArchive.hpp"
#include "ifcore/eHookParameters.hpp"
#include "ifcore/eInterfaceTableHooks.hpp"

#include <boost/shared_ptr.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

class MINIMAL_HOST_API EMultipleInterfaceTableHooks : public EInterfaceTableHooks {
public:
    void AddHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks)
    {
        for (auto& member : m_members) {
            if (member.first != name) continue;
            member.second = hooks;
            return;
        }
        m_members.emplace_back(name, hooks);
    }
    void RemoveHooks(char const* name)
    {
        m_members.erase(std::remove_if(m_members.begin(), m_members.end(),
                                       [name](auto const& member) { return member.first == name; }),
                        m_members.end());
    }
    boost::shared_ptr<EInterfaceTableHooks> FindHooks(char const* name) const
    {
        for (auto const& member : m_members)
            if (member.first == name) return member.second;
        return boost::shared_ptr<EInterfaceTableHooks>();
    }

#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        auto const members = m_members;                                                                                \
        for (auto const& member : members) member.second->operation(EHOOK_ARGUMENTS(__VA_ARGS__));                     \
    }
#include "ifcore/eInterfaceTableHooks.def"

private:
    std::vector<std::pair<std::string, boost::shared_ptr<EInterfaceTableHooks>>> m_members;
};
