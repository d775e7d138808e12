#include "tlvApply.hpp"

#include "progress.hpp"
#include "tlvWalk.hpp"
#include "toolError.hpp"

#include "tlvParserMapTable.hpp"

#include <stdexcept>

namespace ifcoreTool {

static ToolError ParseError(TlvMessageInput const& message, TlvIdTable const& ids)
{
    auto const problem =
        WalkTlvs(message.GetTlv().data(), message.GetTlv().size(), message.GetOffset(), ids, TlvView::asRead);
    if (!problem) throw std::logic_error("the library refuses a message in which nothing is wrong");
    return BadInput(message.GetName() + ": " + problem->GetText());
}

void ApplyTlvMessage(TlvMessageInput& message, TlvIdTable const& ids, EInterfaceTable& table)
{
    static bool const isReady = (Protocol::RunTLVParserMapInitializers(), true);
    static_cast<void>(isReady);
    TlvSender const sender(ids);
    Progress progress("applying operation", std::nullopt);
    while (message.Next()) {
        TLVReader operation(message.GetTlv().data(), static_cast<int>(message.GetTlv().size()));
        try {
            ParseInterfaceListTLV(operation, table);
        } catch (int) {
            throw ParseError(message, ids);
        }
        progress.Step();
    }
}

} // namespace ifcoreTool
