/// @file
/// The cost of loading a program that is linked to the library.
int main(void) {
    return 0;
}
