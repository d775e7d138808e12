#include "eVLAN.hpp"

#include <gtest/gtest.h>

TEST(EVLAN, CutsValuesToTheirWidth)
{
    EVLAN vlan;
    EXPECT_EQ(0U, vlan.GetVLANID());
    EXPECT_EQ(0, vlan.GetUserPriority());
    EXPECT_EQ(0, vlan.GetCanonicalFormat());
    struct {
        int given;
        unsigned int id;
        int priority;
        int canonical;
    } const cases[] = {{0, 0, 0, 0},       {1, 1, 1, 1},    {7, 7, 7, 1},    {8, 8, 0, 0},
                       {4095, 4095, 7, 1}, {4096, 0, 0, 0}, {4097, 1, 1, 1}, {-1, 4095, 7, 1}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        vlan.SetVLANID(static_cast<unsigned int>(c.given));
        vlan.SetUserPriority(c.given);
        vlan.SetCanonicalFormat(c.given);
        EXPECT_EQ(c.id, vlan.GetVLANID());
        EXPECT_EQ(c.priority, vlan.GetUserPriority());
        EXPECT_EQ(c.canonical, vlan.GetCanonicalFormat());
    }
    vlan.Empty();
    EXPECT_TRUE(vlan == EVLAN());
}

TEST(EVLAN, EqualityComparesEveryField)
{
    EVLAN id;
    id.SetVLANID(1);
    EVLAN priority;
    priority.SetUserPriority(1);
    EVLAN canonical;
    canonical.SetCanonicalFormat(1);
    EVLAN const all[] = {EVLAN(), id, priority, canonical};
    for (EVLAN const& left : all) {
        for (EVLAN const& right : all) {
            EXPECT_EQ(&left == &right, left == right);
            EXPECT_EQ(&left != &right, left != right);
        }
    }
}
