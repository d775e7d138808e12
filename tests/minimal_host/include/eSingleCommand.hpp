#pragma once

#include "eBlob.hpp"
#include "eMultiComponentId.hpp"

#include <vector>

class MINIMAL_HOST_API ESingleCommand {
public:
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
