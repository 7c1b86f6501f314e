/// @file
/// Baseline of every program linked to the library: the loader's work only.
int main(void) {
    return 0;
}
