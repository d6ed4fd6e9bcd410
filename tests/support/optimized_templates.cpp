// The linker keeps the first copy of each routine of a template. Of those of the tests, which are
// compiled without optimization, the code under test would run slowly.
#include <string>
#include <vector>

template class std::basic_string<char>;
template class std::vector<std::string>;
