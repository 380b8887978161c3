// The library is made of the components beside this file; a shared library needs one source of its own.
