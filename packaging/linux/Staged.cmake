# What Debian has elsewhere than other systems; CPack runs this where it has gathered the files of a package.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
file(MAKE_DIRECTORY ${share}/zsh/vendor-completions)
file(RENAME ${share}/zsh/site-functions/_kovra ${share}/zsh/vendor-completions/_kovra)
file(REMOVE_RECURSE ${share}/zsh/site-functions)
