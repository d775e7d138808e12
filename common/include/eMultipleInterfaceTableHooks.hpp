#pragma once

#include "ifcore/eHookParameters.hpp"
#include "ifcore/eInterfaceTableHooks.hpp"
#include "ifhostExport.hpp"

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// A named set of observers that is an observer itself: what it is told it tells all its members, in the order in
/// which they were added. A null name is the empty name.
///
/// Members may be added and removed while they are told: the announcement under way still goes to all who were members
/// when it began, and only to them. It keeps those alive to its end, and the set itself may be released during it.
/// A member's exception ends the announcement and is passed on. A set must not be made its own member.
class IFHOST_API EMultipleInterfaceTableHooks : public EInterfaceTableHooks {
public:
    /// Under a name in use the observer takes the old one's place, in the order too. An empty pointer removes the name.
    void AddHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks)
    {
        if (!hooks) {
            RemoveHooks(name);
            return;
        }
        Members members(*m_members);
        std::size_t const position = Find(name);
        if (position == members.size())
            members.push_back({NameOf(name), std::move(hooks)});
        else
            members[position].hooks = std::move(hooks);
        Replace(std::move(members));
    }

    /// False when there is none of that name.
    bool RemoveHooks(char const* name)
    {
        std::size_t const position = Find(name);
        if (position == m_members->size()) return false;
        Members members(*m_members);
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(position));
        Replace(std::move(members));
        return true;
    }

    /// Empty when there is none of that name.
    boost::shared_ptr<EInterfaceTableHooks> FindHooks(char const* name) const
    {
        std::size_t const position = Find(name);
        return position == m_members->size() ? boost::shared_ptr<EInterfaceTableHooks>() : (*m_members)[position].hooks;
    }

#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        boost::shared_ptr<Members const> const members = m_members;                                                    \
        for (Member const& member : *members) member.hooks->operation(EHOOK_ARGUMENTS(__VA_ARGS__));                   \
    }
#include "ifcore/eInterfaceTableHooks.def"

private:
    struct Member {
        std::string name;
        boost::shared_ptr<EInterfaceTableHooks> hooks; // never empty
    };
    using Members = std::vector<Member>;

    static char const* NameOf(char const* name)
    {
        return name ? name : "";
    }
    std::size_t Find(char const* name) const ///< Where the member stands; the number of members without one.
    {
        char const* const wanted = NameOf(name);
        std::size_t position = 0;
        while (position < m_members->size() && (*m_members)[position].name != wanted) ++position;
        return position;
    }
    void Replace(Members members)
    {
        m_members = boost::make_shared<Members const>(std::move(members));
    }

    // Replaced as a whole, never changed: an announcement walks the list that was current when it began and allocates
    // nothing for that.
    boost::shared_ptr<Members const> m_members = boost::make_shared<Members const>();
};
