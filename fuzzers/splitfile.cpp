#include "Scratch.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/XMLSplitInfo.h"

#include <array>
#include <cstdlib>

namespace {

using Layouts = std::array<SplitLayout, 2 * CSplitCatalog::LayoutCount>;

Layouts Present()
{
    Layouts layouts;
    for (size_t i = 0; i < layouts.size(); ++i)
        layouts[i] = CSplitCatalog::Instance()->Layout(int(i) / CSplitCatalog::LayoutCount,
                                                       int(i) % CSplitCatalog::LayoutCount);
    return layouts;
}

/// Small layouts before each file, so that a run costs little.
void Reset()
{
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i)
        catalog->normalLayouts[i] = catalog->customLayouts[i] = SplitLayout{1, 1, 1, {{0, 0, 1, 1}}};
}

void CheckUsable(const Layouts& layouts)
{
    for (const SplitLayout& layout : layouts) {
        if (!IsInGrid({0, 0, layout.rows, layout.cols}, 8, 8) || layout.count != layout.cells.size() ||
            !IsTiling(TilingOf(layout)))
            abort();
        for (const SplitCell& cell : layout.cells) {
            if (!IsInGrid(cell, layout.rows, layout.cols))
                abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    SilenceQt();
    return 0;
}

// A refused file changes nothing, an accepted one gives layouts that a deck can show and that read back.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    CSplitCatalog::Instance()->splitFilePath = scratch.Write("SplitInfo.xml", data, size);
    Reset();
    const Layouts before = Present();
    const int result = XMLSplitInfo().Read();
    const Layouts after = Present();
    if (result != 1 && result != 0 && result != -201 && result != -401)
        abort();
    if (result != 1 && !(after == before))
        abort();
    CheckUsable(after);
    if (result != 1)
        return 0;
    XMLSplitInfo().Write();
    if (XMLSplitInfo().Read() != 1 || !(Present() == after))
        abort();
    return 0;
}
