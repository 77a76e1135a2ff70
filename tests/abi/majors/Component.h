#pragma once

// A component built with one major version of the library.
struct Component {
    // The statics that its version of the library brought, as the component sees them.
    void const* version;
    void const* empty;
    // Works with errors, texts and arrays; answers whether all came out right.
    bool (*work)();
};
