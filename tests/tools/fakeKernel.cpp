#include "fakeKernel.hpp"

#include "eIPAddress.hpp"
#include "eMACAddress.hpp"

#include <libmnl/libmnl.h>

#include <cerrno>
#include <cstring>

#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/neighbour.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace toolTest {

namespace {

/// One message, put together by the kernel's own headers.
template <class Header> class Message {
public:
    Message(unsigned short type, unsigned short flags, unsigned int sequence)
        : m_message(mnl_nlmsg_put_header(m_buffer)),
          header(static_cast<Header*>(mnl_nlmsg_put_extra_header(m_message, sizeof(Header))))
    {
        m_message->nlmsg_type = type;
        m_message->nlmsg_flags = flags;
        m_message->nlmsg_seq = sequence;
    }
    void Put(unsigned short type, void const* bytes, std::size_t size) { mnl_attr_put(m_message, type, size, bytes); }
    std::string GetBytes() const { return std::string(m_buffer, m_message->nlmsg_len); }

private:
    alignas(nlmsghdr) char m_buffer[512] = {};
    nlmsghdr* m_message;

public:
    Header* const header;
};

unsigned char FamilyOf(std::string const& address)
{
    return address.find(':') == std::string::npos ? AF_INET : AF_INET6;
}

std::size_t SizeOf(std::string const& address)
{
    return FamilyOf(address) == AF_INET ? 4 : 16;
}

std::string LinkMessage(unsigned short type, int index, std::string const& name, bool running, unsigned int sequence)
{
    Message<ifinfomsg> message(type, NLM_F_MULTI, sequence);
    message.header->ifi_index = index;
    message.header->ifi_flags = IFF_UP | (running ? IFF_RUNNING : 0);
    message.Put(IFLA_IFNAME, name.c_str(), name.size() + 1);
    return message.GetBytes();
}

std::string AddressMessage(unsigned short type, int link, std::string const& address, unsigned char prefix,
                           unsigned int sequence)
{
    Message<ifaddrmsg> message(type, NLM_F_MULTI, sequence);
    message.header->ifa_family = FamilyOf(address);
    message.header->ifa_prefixlen = prefix;
    message.header->ifa_index = static_cast<unsigned int>(link);
    message.Put(IFA_ADDRESS, EIPAddress(address).GetBytes(), SizeOf(address));
    return message.GetBytes();
}

/// Without a MAC, one that does not answer.
std::string NeighborMessage(unsigned short type, int link, std::string const& address, std::string const& mac,
                            bool isRouter, unsigned int sequence)
{
    Message<ndmsg> message(type, NLM_F_MULTI, sequence);
    message.header->ndm_family = FamilyOf(address);
    message.header->ndm_ifindex = link;
    message.header->ndm_state = mac.empty() ? NUD_FAILED : NUD_REACHABLE;
    message.header->ndm_flags = isRouter ? NTF_ROUTER : 0;
    message.Put(NDA_DST, EIPAddress(address).GetBytes(), SizeOf(address));
    if (!mac.empty()) message.Put(NDA_LLADDR, EMACAddress(mac).GetMACAddress().GetData(), 6);
    return message.GetBytes();
}

} // namespace

void FakeKernel::Tell(Bytes const& message)
{
    if (m_isLosing)
        m_hasLost = true;
    else
        m_events.push_back(message);
}

void FakeKernel::SetLink(int index, std::string const& name, bool running)
{
    Link& link = m_links[index];
    link.name = name;
    link.running = running;
    Tell(LinkMessage(RTM_NEWLINK, index, name, running, 0));
}

void FakeKernel::RemoveLink(int index)
{
    m_links.erase(index);
    Tell(LinkMessage(RTM_DELLINK, index, "gone", false, 0));
}

void FakeKernel::AddAddress(int link, std::string const& address, unsigned char prefix)
{
    m_links.at(link).addresses.insert({address, prefix});
    Tell(AddressMessage(RTM_NEWADDR, link, address, prefix, 0));
}

void FakeKernel::RemoveAddress(int link, std::string const& address, unsigned char prefix)
{
    m_links.at(link).addresses.erase({address, prefix});
    Tell(AddressMessage(RTM_DELADDR, link, address, prefix, 0));
}

void FakeKernel::SetNeighbor(int link, std::string const& address, std::string const& mac, bool isRouter)
{
    m_links.at(link).neighbors[address] = {mac, isRouter};
    Tell(NeighborMessage(RTM_NEWNEIGH, link, address, mac, isRouter, 0));
}

void FakeKernel::FailNeighbor(int link, std::string const& address)
{
    m_links.at(link).neighbors[address] = {"", false};
    Tell(NeighborMessage(RTM_NEWNEIGH, link, address, "", false, 0));
}

void FakeKernel::RemoveNeighbor(int link, std::string const& address)
{
    m_links.at(link).neighbors.erase(address);
    Tell(NeighborMessage(RTM_DELNEIGH, link, address, "", false, 0));
}

int FakeKernel::Request(unsigned short type, unsigned char family, unsigned int sequence)
{
    if (type == RTM_GETLINK && !m_atDump.empty()) {
        std::function<void()> const action = m_atDump.front();
        m_atDump.pop_front();
        action();
    }
    for (auto const& [index, link] : m_links) {
        if (type == RTM_GETLINK)
            m_answers.push_back(LinkMessage(RTM_NEWLINK, index, link.name, link.running, sequence));
        if (type == RTM_GETADDR)
            for (auto const& [address, prefix] : link.addresses)
                if (FamilyOf(address) == family)
                    m_answers.push_back(AddressMessage(RTM_NEWADDR, index, address, prefix, sequence));
        if (type == RTM_GETNEIGH)
            for (auto const& [address, neighbor] : link.neighbors)
                if (FamilyOf(address) == family)
                    m_answers.push_back(
                        NeighborMessage(RTM_NEWNEIGH, index, address, neighbor.first, neighbor.second, sequence));
    }
    m_answers.push_back(Message<int>(NLMSG_DONE, NLM_F_MULTI, sequence).GetBytes());
    return 0;
}

int FakeKernel::Receive(std::vector<char>& buffer, std::size_t& size)
{
    if (m_answers.empty() && m_hasLost) { // on purpose before what was queued earlier, as the kernel does it
        m_isLosing = false;
        m_hasLost = false;
        return ENOBUFS;
    }
    if (m_answers.empty() && m_events.empty()) {
        if (m_whenFollowed.empty()) return ECANCELED;
        std::function<void()> const action = m_whenFollowed.front();
        m_whenFollowed.pop_front();
        action();
        return Receive(buffer, size);
    }
    std::deque<Bytes>& queue = m_answers.empty() ? m_events : m_answers;
    buffer.assign(queue.front().begin(), queue.front().end());
    size = buffer.size();
    queue.pop_front();
    return 0;
}

void FakeKernel::Restart()
{
    ++restarts;
    m_answers.clear();
    m_events.clear();
}

} // namespace toolTest
