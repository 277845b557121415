# For folders that link many programs which are run once: gold, of the same package as the usual linker, takes a fifth of
# the time. What is installed is linked as usual, and so are the fuzzers, whose run-time library makes it complain.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold TARVINEL_HAS_GOLD)
if(TARVINEL_HAS_GOLD AND NOT TARVINEL_FUZZ)
  add_link_options(-fuse-ld=gold)
endif()
