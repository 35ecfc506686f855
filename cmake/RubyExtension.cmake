# The Ruby bridge and the extension module. Ruby comes from QUILLON_RUBY_INCLUDE_DIRS and
# QUILLON_RUBY_LIBRARY when given (a host SDK), else from the `ruby` on the PATH.
if(QUILLON_RUBY_INCLUDE_DIRS)
  set(RUBY_INCLUDE_DIRS ${QUILLON_RUBY_INCLUDE_DIRS})
  set(RUBY_LIBRARY ${QUILLON_RUBY_LIBRARY})
  find_program(RUBY_EXECUTABLE ruby)
else()
  find_program(RUBY_EXECUTABLE ruby REQUIRED)
  foreach(key rubyhdrdir rubyarchhdrdir libdir RUBY_SO_NAME)
    execute_process(COMMAND ${RUBY_EXECUTABLE} -e "print RbConfig::CONFIG['${key}']"
                    OUTPUT_VARIABLE RUBY_CONFIG_${key})
  endforeach()
  set(RUBY_INCLUDE_DIRS ${RUBY_CONFIG_rubyhdrdir} ${RUBY_CONFIG_rubyarchhdrdir})
  find_library(RUBY_LIBRARY NAMES ${RUBY_CONFIG_RUBY_SO_NAME} HINTS ${RUBY_CONFIG_libdir}
               REQUIRED)
endif()

file(GLOB BRIDGE_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/bridge/*.cpp)
list(REMOVE_ITEM BRIDGE_SOURCES ${CMAKE_SOURCE_DIR}/src/bridge/module_entry.cpp)
add_library(quillon_bridge STATIC ${BRIDGE_SOURCES})
# SYSTEM: Ruby's headers are not warning-clean, and they must not fail our -Werror.
target_include_directories(quillon_bridge SYSTEM PUBLIC ${RUBY_INCLUDE_DIRS})
target_link_libraries(quillon_bridge PUBLIC quillon_core)
if(RUBY_LIBRARY)
  target_link_libraries(quillon_bridge PUBLIC ${RUBY_LIBRARY})
endif()

add_library(Quillonbin2xml MODULE ${CMAKE_SOURCE_DIR}/src/bridge/module_entry.cpp)
# Linked as an object, not from the archive: nothing refers to the idle thread count, yet its
# static initialiser must run when the module loads.
target_sources(Quillonbin2xml PRIVATE ${CMAKE_SOURCE_DIR}/src/util/thread_count.cpp)
target_link_libraries(Quillonbin2xml PRIVATE quillon_bridge)
# Ruby loads extensions as .so everywhere but macOS, where they are .bundle.
if(APPLE)
  set(QUILLON_EXT_SUFFIX ".bundle")
else()
  set(QUILLON_EXT_SUFFIX ".so")
endif()
set_target_properties(Quillonbin2xml PROPERTIES PREFIX "" SUFFIX ${QUILLON_EXT_SUFFIX}
  LIBRARY_OUTPUT_DIRECTORY ${QUILLON_OUT}/ext)

# Only Init_Quillonbin2xml leaves the module; each linker is told so in its own way.
if(APPLE)
  set(EXPORT_LIST ${CMAKE_SOURCE_DIR}/src/bridge/exports.txt)
  target_link_options(Quillonbin2xml PRIVATE -Wl,-exported_symbols_list,${EXPORT_LIST})
  if(NOT RUBY_LIBRARY)
    target_link_options(Quillonbin2xml PRIVATE -Wl,-undefined,dynamic_lookup)
  endif()
elseif(WIN32)
  # The declaration's dllexport is the export list: MinGW's linker exports nothing else then.
  set(EXPORT_LIST "")
else()
  set(EXPORT_LIST ${CMAKE_SOURCE_DIR}/src/bridge/exports.map)
  target_link_options(Quillonbin2xml PRIVATE -Wl,--version-script=${EXPORT_LIST}
                      -Wl,--no-undefined)
endif()
if(EXPORT_LIST)
  set_target_properties(Quillonbin2xml PROPERTIES LINK_DEPENDS ${EXPORT_LIST})
endif()

# The gem's layout in the build tree as well, so that lib/quillonbin2xml.rb loads this build
# with `ruby -Ibuild/lib -Ilib -rquillonbin2xml`.
add_custom_command(TARGET Quillonbin2xml POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E make_directory ${QUILLON_OUT}/lib/quillonbin2xml
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:Quillonbin2xml>
          ${QUILLON_OUT}/lib/quillonbin2xml/$<TARGET_FILE_NAME:Quillonbin2xml>)
