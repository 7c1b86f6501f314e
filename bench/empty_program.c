/// @file
/// What every program costs that is linked to the library: the loader's work and nothing else.
int main(void) {
    return 0;
}
