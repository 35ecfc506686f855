$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR")
require "Quillonbin2xml"
require "minitest/autorun"

class TestOptionsDocument < Minitest::Test
  BLOCKS = %w[
    SettingsImageSampler SettingsImageFilter SettingsCamera SettingsCameraDof SettingsMotionBlur
    SettingsGI SettingsIrradianceMap SettingsPhotonMap SettingsLightCache SettingsCaustics
    SettingsRaycaster SettingsRegionsGenerator SettingsDMCGI SettingsDMCSampler
    SettingsColorMapping SettingsRenderChannels SettingsOptions SettingsDefaultDisplacement
    SettingsEnvironment SettingsOutput CameraPhysical SettingsDR
  ].freeze

  def setup
    @doc = Quillonbin2xml.serialize_to_xml(nil)
  end

  def test_default_document_holds_the_22_blocks_in_order
    assert_equal Encoding::UTF_8, @doc.encoding
    assert @doc.start_with?("  <Assets>\n    <Assets>\n")
    assert @doc.end_with?("    </Assets>\n  </Assets>\n")
    urls = @doc.scan(/<Asset layout="" renderer="ombra" type="settings" url="([^"]*)" >/).flatten
    assert_equal BLOCKS.map { |b| "/#{b}" }, urls
    assert_equal 22, @doc.scan(/^    <Assets>$/).size
  end

  def test_default_values_and_channels
    assert_match %r{name="mtl_maxDepth" [^\n]*>\n\s*<value>2</value>}, @doc
    assert_match %r{<entry>RGB color</entry>\n\s*<entry>Alpha</entry>}, @doc
    assert_equal @doc, Quillonbin2xml.serialize_to_xml(42)
  end
end
