#include "preview/vorschau_symbols.h"

#include <initializer_list>

namespace preview::symbols {

namespace {

using platform::Symbol;
using Line = Symbol::Line;

struct Corner {
    double x = 0;
    double y = 0;
};

// Lines from corner to corner.
void add(Symbol& symbol, std::initializer_list<Corner> corners) {
    for (const Corner* corner = corners.begin() + 1; corner < corners.end(); ++corner) {
        symbol.lines.push_back({(corner - 1)->x, (corner - 1)->y, corner->x, corner->y});
    }
}

Symbol of(std::initializer_list<std::initializer_list<Corner>> strokes) {
    Symbol symbol;
    for (const auto& stroke : strokes) {
        add(symbol, stroke);
    }
    return symbol;
}

Symbol magnifier() {
    return of({{{9, 2},
                {11.3, 4},
                {11.8, 7},
                {10.3, 10},
                {7.5, 11.3},
                {4.6, 10.6},
                {2.6, 8.2},
                {2.6, 5},
                {4.8, 2.6},
                {7, 2},
                {9, 2}},
               {{10.5, 10.5}, {14, 14}}});
}

}  // namespace

Symbol firstPage() { return of({{{4, 3}, {4, 13}}, {{12, 3}, {7, 8}, {12, 13}}}); }
Symbol previousPage() { return of({{{10.5, 3}, {5.5, 8}, {10.5, 13}}}); }
Symbol nextPage() { return of({{{5.5, 3}, {10.5, 8}, {5.5, 13}}}); }
Symbol lastPage() { return of({{{12, 3}, {12, 13}}, {{4, 3}, {9, 8}, {4, 13}}}); }

Symbol zoomOut() {
    Symbol symbol = magnifier();
    add(symbol, {{5, 6.7}, {9.4, 6.7}});
    return symbol;
}

Symbol zoomIn() {
    Symbol symbol = zoomOut();
    add(symbol, {{7.2, 4.5}, {7.2, 8.9}});
    return symbol;
}

// A sheet with the corners of a frame around it.
Symbol wholePage() {
    return of({{{5, 4}, {11, 4}, {11, 12}, {5, 12}, {5, 4}},
               {{2, 4}, {2, 1.5}, {4, 1.5}},
               {{12, 1.5}, {14, 1.5}, {14, 4}},
               {{2, 12}, {2, 14.5}, {4, 14.5}},
               {{12, 14.5}, {14, 14.5}, {14, 12}}});
}

// An arrow to both sides between the edges of a sheet.
Symbol pageWidth() {
    return of({{{2, 2}, {2, 14}},
               {{14, 2}, {14, 14}},
               {{4.5, 8}, {11.5, 8}},
               {{6.5, 6}, {4.5, 8}, {6.5, 10}},
               {{9.5, 6}, {11.5, 8}, {9.5, 10}}});
}

Symbol previousHit() { return of({{{8, 13}, {8, 3}}, {{4, 7}, {8, 3}, {12, 7}}}); }
Symbol nextHit() { return of({{{8, 3}, {8, 13}}, {{4, 9}, {8, 13}, {12, 9}}}); }

// A folder whose front is turned down.
Symbol openFile() {
    return of({{{3, 13}, {1.8, 13}, {1.8, 3}, {6, 3}, {7.5, 5}, {12.2, 5}, {12.2, 7}},
               {{3, 13}, {5, 7}, {14.5, 7}, {12.3, 13}, {3, 13}}});
}

Symbol print() {
    return of({{{4.5, 6}, {4.5, 2}, {11.5, 2}, {11.5, 6}},
               {{4.5, 11.5}, {2, 11.5}, {2, 6}, {14, 6}, {14, 11.5}, {11.5, 11.5}},
               {{4.5, 9.5}, {11.5, 9.5}, {11.5, 14}, {4.5, 14}, {4.5, 9.5}}});
}

// A sheet with a turned corner, and an arrow down to where it is kept.
Symbol savePdf() {
    return of({{{4, 7}, {4, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 7}},
               {{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}},
               {{8.2, 6.5}, {8.2, 12}},
               {{5.7, 9.7}, {8.2, 12.2}, {10.7, 9.7}},
               {{3, 14.5}, {13.5, 14.5}}});
}

Symbol close() { return of({{{3.5, 3.5}, {12.5, 12.5}}, {{12.5, 3.5}, {3.5, 12.5}}}); }

}  // namespace preview::symbols
