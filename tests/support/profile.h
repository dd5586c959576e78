// A platform profile of a test: the built-in one, to be changed and installed.
#ifndef ORVEX_TESTS_PROFILE_H
#define ORVEX_TESTS_PROFILE_H

#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <string>
#include <vector>

#include "interface/slots.h"

namespace orvex_test {

class Profile : public orvex_platform_profile {
   public:
    Profile() : orvex_platform_profile(*orvex_platform_default_profile()), catalogue(types, types + type_count) {}
    Profile(const Profile &) = delete;
    ~Profile() { install(nullptr); }

    interface_info &type(const std::string &name)
    {
        for (orvex_interface_type &type : catalogue)
            if (type.name == name) return type.info;
        ADD_FAILURE() << "no type " << name;
        return catalogue.front().info;
    }

    // Puts the profile in force as a router starts: nothing is cached.
    void install()
    {
        types = catalogue.data();
        type_count = catalogue.size();
        install(this);
    }

    std::vector<orvex_interface_type> catalogue;

   private:
    static void install(const orvex_platform_profile *profile)
    {
        EXPECT_EQ(orvex_platform_install(profile), 0);
        parse_pf_attrib = {0, 1, 0};
        orvex::multichassis_naming = -1;
    }
};

}  // namespace orvex_test

#endif
