#pragma once

#include "eBlob.hpp"
#include "eMultiComponentId.hpp"
#include "ifhostExport.hpp"

#include <vector>

/// One command of the host to a table.
class IFHOST_API ESingleCommand {
public:
    /// \param action    2 set, 3 enable, 4 disable, 5 add, 6 remove, 7 edit
    /// \param editSubId names the field of an edit
    /// \param data      an archive's bytes
    ESingleCommand(unsigned int action, EMultiComponentId const& id, std::vector<unsigned int> const& editSubId = {},
                   EBlob const& data = EBlob())
        : m_action(action), m_id(id), m_editSubId(editSubId), m_data(data)
    {
    }

    unsigned int GetAction() const { return m_action; }
    EMultiComponentId const& GetId() const { return m_id; }
    std::vector<unsigned int> const& GetEditSubId() const { return m_editSubId; }
    EBlob const& GetData() const { return m_data; }

private:
    unsigned int m_action;
    EMultiComponentId m_id;
    std::vector<unsigned int> m_editSubId;
    EBlob m_data;
};
